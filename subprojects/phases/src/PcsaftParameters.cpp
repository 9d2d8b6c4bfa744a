#include <tarvo/phases/PcsaftParameters.h>

#include <cassert>

namespace Phase {

int PcsaftParameters::ncomp = 0;
double PcsaftParameters::m[NC] = {}, PcsaftParameters::sigma[NC] = {}, PcsaftParameters::epsilon[NC] = {};
double PcsaftParameters::kij[NC][NC] = {};

void PcsaftParameters::resize(int nc) {
    assert(nc >= 0);
    assert(nc <= NC);
    ncomp = nc;
    for (int i = 0; i < nc; ++i)
        for (int j = 0; j < nc; ++j) kij[i][j] = 0;
}

void PcsaftParameters::setparameters(int i, const double& mi, const double& sigmai, const double& epsiloni) {
    assert(i >= 0);
    assert(i < ncomp);
    m[i] = mi;
    sigma[i] = sigmai;
    epsilon[i] = epsiloni;
}

} // namespace Phase
