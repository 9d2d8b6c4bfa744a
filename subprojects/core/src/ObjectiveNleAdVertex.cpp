#include <tarvo/core/ObjectiveNleAdVertex.h>

#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <cassert>
#include <utility>

ObjectiveNleAdVertex::ObjectiveNleAdVertex(std::string name) : ObjectiveNleAd(std::move(name)) {}

void ObjectiveNleAdVertex::operator()(double* X, double* y, Jacobian* J) {
    try {
        evaluate_(X, y, J);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

void ObjectiveNleAdVertex::unscalex(double* X) {
    unscaleNumbers_(X);
    storeSolution_(X, false);
}

int ObjectiveNleAdVertex::calculateResiduals(std::vector<Value>& r, uint32_t offset) {
    const unsigned n = size();
    assert(offset + n <= r.size());
    for (unsigned i = 0; i < n; ++i)
        r[offset + i] = residuals[i];
    return static_cast<int>(n);
}
