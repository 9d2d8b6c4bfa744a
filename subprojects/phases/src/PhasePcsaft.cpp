#include "PcsaftData.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhasePcsaft.h>
#include <tarvo/utility/Error.h>

#include <cstring>
#include <map>
#include <string>

using Tarvo::Utility::PhaseType;

namespace {
// The kernel's names of species whose name in the data differs.
const std::map<std::string, std::string>& dataNames() {
    static const std::map<std::string, std::string> names{
        {"CH4", "methane"},        {"CO2", "carbon dioxide"},   {"N2", "nitrogen"},        {"O2", "oxygen"},
        {"CO", "carbon monoxide"}, {"butane", "n-butane"},      {"pentane", "n-pentane"},  {"nhexane", "n-hexane"},
        {"nheptane", "n-heptane"}, {"noctane", "n-octane"},     {"nnonane", "n-nonane"},   {"ndecane", "n-decane"},
        {"nhexadecane", "n-hexadecane"}, {"eicosane", "n-eicosane"}, {"ibutane", "isobutane"},
        {"ipentane", "isopentane"}, {"ciclohexane", "cyclohexane"}, {"hydrogensulfide", "hydrogen sulfide"},
        {"oxylene", "o-xylene"},   {"mxylene", "m-xylene"},     {"pxylene", "p-xylene"},   {"hexene", "1-hexene"},
        {"nbutylene", "1-butene"}};
    return names;
}

// Sums over the present components per kmol of the phase, as the ideal sums count.
Value sum(const Vector& x) {
    Value s = 0.0;
    for (const Value& f : x) s += f;
    return s;
}
} // namespace

namespace Phase {

void setPcsaftParametersOfComponents() {
    if (NCOMPONENTS > PcsaftParameters::NC)
        throw ErrorRunTime("Phase::setPcsaftParametersOfComponents",
                           "PC-SAFT holds at most 9 components, not " + std::to_string(NCOMPONENTS));
    PcsaftParameters::resize(NCOMPONENTS);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const auto alias = dataNames().find(components[i]->name);
        const std::string& name = alias == dataNames().end() ? components[i]->name : alias->second;
        double m = 0, sigma = 0, epsilon = 0; // none: the component may not be present
        for (const PcsaftData::Component& c : PcsaftData::components)
            if (name == c.name) m = c.m, sigma = c.sigma, epsilon = c.epsilon;
        PcsaftParameters::setparameters(i, m, sigma, epsilon);
    }
}

Pcsaft::Pcsaft() { setPcsaftParametersOfComponents(); }

void Pcsaft::initialize(const Vector& x, const Value& rho, const Value& mw) {
    if (!(rho.toDouble() > 0) || !(mw.toDouble() > 0)) return;
    // The chain volume does not depend much on temperature; the flash corrects the rest.
    precompute(T0, x);
    beta = rho / mw / density(one);
}

void Pcsaft::prepare(const Value& T, const Vector& x) { precompute(T, x); }

void Pcsaft::preparefugacity(const Value& P, const Value& T, const Vector& x, const Value&) const {
    precompute(T, x);
    preparefugacity_eos(P, T, lnphi_);
}

const Value& Pcsaft::calculate_P_(const Value& rho, const Value& T, const Vector& x, const Value&) const {
    requireParameters(x);
    precompute(T, x);
    P_ = pressure(rho / density(one), T);
    return P_;
}

const Value& Pcsaft::calculate_rho_(const Value&, const Value& T, const Vector& x) const {
    requireParameters(x);
    precompute(T, x);
    rho_ = density(beta);
    return rho_;
}

const Value& Pcsaft::calculate_H_(const Value& P, const Value& T, const Vector& x) const {
    requireParameters(x);
    precompute(T, x);
    const Value departure = sum(x) * residualEnthalpy(T);
    sumH_(PhaseType::vapor, P, T, x);
    H_ += departure;
    return H_;
}

const Value& Pcsaft::calculate_S_(const Value& P, const Value& T, const Vector& x) const {
    requireParameters(x);
    precompute(T, x);
    const Value departure = sum(x) * residualEntropy(T);
    sumS_(PhaseType::vapor, P, T, x);
    S_ += departure;
    return S_;
}

const Value& Pcsaft::calculate_Cp_(const Value& P, const Value& T, const Vector& x) const {
    requireParameters(x);
    precompute(T, x);
    const Value departure = sum(x) * residualHeatCapacity(T);
    sumCp_(PhaseType::vapor, P, T, x);
    Cp_ += departure;
    return Cp_;
}

} // namespace Phase
