#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseIdeal.h>

#include <cmath>

using Tarvo::Utility::PhaseType;

namespace Phase {

namespace {
// Units made on first use: static Values at namespace scope would depend on the order of static
// initialisation of the unit engine.
const Value& zeroMolarEnthalpy() {
    static const Value zero(0.0, "J/kmol");
    return zero;
}
const Value& zeroMolarEntropy() {
    static const Value zero(0.0, "J/(kmol*K)");
    return zero;
}
const Value& zeroMolarVolume() {
    static const Value zero(0.0, "m3/kmol");
    return zero;
}
const Value& pascalSecond() {
    static const Value unit(1.0, "Pa*s");
    return unit;
}
const Value& wattPerMetreKelvin() {
    static const Value unit(1.0, "W/(m*K)");
    return unit;
}
const Value& newtonPerMetre() {
    static const Value unit(1.0, "N/m");
    return unit;
}
bool present(const Vector& x, int i) { return x[i].toDouble() > 0; }
} // namespace

Ideal::Ideal()
    : viscosities_(NCOMPONENTS), molecularWeights_(NCOMPONENTS), mixing_(NCOMPONENTS), lnphi_(NCOMPONENTS, zero) {}

void Ideal::initialize(const Vector&, const Value&, const Value&) {}

void Ideal::prepare(const Value&, const Vector&) {}

void Ideal::preparefugacity(const Value& P, const Value& T, const Vector&, const Value&) const {
    const bool condensed = phaseType() == PhaseType::liquid || phaseType() == PhaseType::solid;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (condensed)
            lnphi_[i] = log(components[i]->kvli(T, P));
        else
            lnphi_[i] = 0.0;
    }
}

const Value& Ideal::calculate_P_(const Value& a, const Value& b, const Vector&, const Value& total) const {
    P_ = total * R * a * b;
    return P_;
}

const Value& Ideal::calculate_rho_(const Value& P, const Value& T, const Vector& x) const {
    if (phaseType() == PhaseType::vapor) {
        rho_ = P / R / T;
        return rho_;
    }
    spare_ = zeroMolarVolume();
    const bool solid = phaseType() == PhaseType::solid;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!present(x, i)) continue;
        const Value density = solid ? components[i]->rhos(T, P) : components[i]->rhol(T, P);
        if (density.toDouble() > 0) spare_ += x[i] / density;
    }
    rho_ = 1.0 / spare_;
    return rho_;
}

const Value& Ideal::calculate_H_(const Value& P, const Value& T, const Vector& x) const {
    return sumH_(phaseType(), P, T, x);
}

const Value& Ideal::calculate_S_(const Value& P, const Value& T, const Vector& x) const {
    return sumS_(phaseType(), P, T, x);
}

const Value& Ideal::calculate_Cp_(const Value& P, const Value& T, const Vector& x) const {
    return sumCp_(phaseType(), P, T, x);
}

const Value& Ideal::sumH_(PhaseType state, const Value& P, const Value& T, const Vector& x) const {
    H_ = zeroMolarEnthalpy();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!present(x, i)) continue;
        const ComponentGeneric& c = *components[i];
        switch (state) {
        case PhaseType::vapor: H_ += x[i] * c.hv(T, P); break;
        case PhaseType::liquid: H_ += x[i] * c.hl(T, P); break;
        case PhaseType::solid: H_ += x[i] * c.hs(T, P); break;
        default: break;
        }
    }
    return H_;
}

const Value& Ideal::sumS_(PhaseType state, const Value& P, const Value& T, const Vector& x) const {
    S_ = zeroMolarEntropy();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!present(x, i)) continue;
        const ComponentGeneric& c = *components[i];
        Value pure = zeroMolarEntropy();
        switch (state) {
        case PhaseType::vapor: pure = c.sv(T, P); break;
        case PhaseType::liquid: pure = c.sl(T, P); break;
        case PhaseType::solid: pure = c.ss(T, P); break;
        default: break;
        }
        S_ += x[i] * (pure - R * log(x[i]));
    }
    return S_;
}

const Value& Ideal::sumCp_(PhaseType state, const Value& P, const Value& T, const Vector& x) const {
    Cp_ = zeroMolarEntropy();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!present(x, i)) continue;
        const ComponentGeneric& c = *components[i];
        switch (state) {
        case PhaseType::vapor: Cp_ += x[i] * c.cpv(T, P); break;
        case PhaseType::liquid: Cp_ += x[i] * c.cpl(T, P); break;
        case PhaseType::solid: Cp_ += x[i] * c.cps(T, P); break;
        default: break;
        }
    }
    return Cp_;
}

void Ideal::fillVaporData_(const Value& T, const Value& P, const Vector& x) const {
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!present(x, i)) continue;
        viscosities_[i] = components[i]->muv(T, P).toDouble();
        molecularWeights_[i] = components[i]->mw().toDouble();
    }
}

Value Ideal::mu_(const Value& T, const Value& P, const Vector& x) const {
    switch (phaseType()) {
    case PhaseType::liquid: {
        Value logMean = 0.0;
        for (int i = 0; i < NCOMPONENTS; ++i)
            if (present(x, i)) logMean += x[i] * log(components[i]->mul(T) / pascalSecond());
        return exp(logMean) * pascalSecond();
    }
    case PhaseType::vapor: {
        fillVaporData_(T, P, x);
        const std::vector<double>& mu = viscosities_;
        const std::vector<double>& M = molecularWeights_;
        double viscosity = 0;
        for (int i = 0; i < NCOMPONENTS; ++i) {
            if (!present(x, i)) continue;
            double den = 1;
            for (int j = 0; j < NCOMPONENTS; ++j) {
                if (j == i || !present(x, j)) continue;
                const double f = (1 + (mu[i] / mu[j]) * std::sqrt(M[j] / M[i])) /
                                 (2.8284271247461903 * std::sqrt(1 + M[i] / M[j]));
                den += x[j].toDouble() / x[i].toDouble() * f;
            }
            mixing_[i] = den;
            viscosity += mu[i] / den;
        }
        return viscosity * pascalSecond();
    }
    default: return 1e10 * pascalSecond();
    }
}

Value Ideal::kappa_(const Value& T, const Value& P, const Vector& x) const {
    switch (phaseType()) {
    case PhaseType::liquid: {
        Value sum = 0.0;
        for (int i = 0; i < NCOMPONENTS; ++i)
            if (present(x, i)) sum += x[i] / pow(components[i]->kl(T) / wattPerMetreKelvin(), 3.4);
        return pow(sum, -1 / 3.4) * wattPerMetreKelvin();
    }
    case PhaseType::vapor: {
        fillVaporData_(T, P, x);
        const std::vector<double>& mu = viscosities_;
        const std::vector<double>& M = molecularWeights_;
        Value conductivity = 0.0 * wattPerMetreKelvin();
        for (int i = 0; i < NCOMPONENTS; ++i) {
            if (!present(x, i)) continue;
            double d = x[i].toDouble();
            for (int j = 0; j < NCOMPONENTS; ++j) {
                if (j == i || !present(x, j)) continue;
                const double root = 1 + std::sqrt((mu[i] / mu[j]) * std::sqrt(M[j] / M[i]));
                d += x[j].toDouble() * root * root / std::sqrt(8 * (1 + M[i] / M[j]));
            }
            mixing_[i] = d;
            conductivity += x[i] * components[i]->kv(T, P) / d;
        }
        return conductivity;
    }
    default: return 1e10 * wattPerMetreKelvin();
    }
}

Value Ideal::sigma_(const Value& T, const Value& P, const Vector& x) const {
    if (phaseType() != PhaseType::liquid) return 0.0 * newtonPerMetre();
    double volume = 0;
    Value weighted = 0.0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!present(x, i)) continue;
        const double Vi = (x[i] / components[i]->rhol(T, P)).toDouble();
        volume += Vi;
        weighted += Vi * pow(components[i]->sigma(T) / newtonPerMetre(), 0.25);
    }
    return pow(weighted / volume, 4.0) * newtonPerMetre();
}

} // namespace Phase
