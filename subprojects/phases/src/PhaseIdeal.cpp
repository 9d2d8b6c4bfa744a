#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseIdeal.h>

#include <tarvo/value/ActiveContext.h>

#include <cmath>
#include <optional>

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

// The units of a pure property of the kind given: entropy and heat capacity share theirs.
const Value& unitOf(Ideal::PureProperty kind) {
    return kind == Ideal::PureProperty::enthalpy ? zeroMolarEnthalpy() : zeroMolarEntropy();
}

// The pure component's property of the kind asked for, in a condensed state.
Value condensedProperty(const ComponentGeneric& c, PhaseType state, Ideal::PureProperty kind, const Value& T,
                        const Value& P) {
    const bool h = kind == Ideal::PureProperty::enthalpy, s = kind == Ideal::PureProperty::entropy;
    switch (state) {
    case PhaseType::liquid: return h ? c.hl(T, P) : s ? c.sl(T, P) : c.cpl(T, P);
    case PhaseType::solid: return h ? c.hs(T, P) : s ? c.ss(T, P) : c.cps(T, P);
    default: return unitOf(kind);
    }
}
} // namespace

Ideal::Ideal()
    : viscosities_(NCOMPONENTS), molecularWeights_(NCOMPONENTS), mixing_(NCOMPONENTS), lnphi_(NCOMPONENTS, zero) {
    for (auto& kind : pure_)
        for (PurePoints& state : kind) state.points.resize(NCOMPONENTS);
}

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

// Inside a solve of many unknowns every Value carries a sparse list of derivatives, and each operation in a
// route merges such lists. A pure component's property depends on T and P alone: it is worked out with two
// directions of its own, T and P, and its partials reach the solve's directions in one linear combination
// per sum. The numbers are those of the plain arithmetic, operation for operation, and they are kept until T,
// P or the state change.
auto Ideal::purePoints_(const Value& P, const Value& T, const Vector& x, PhaseType state,
                        PureProperty kind) const -> std::vector<PurePoint>& {
    const bool derivatives = Active::numdir() > 0;
    // A vapor's enthalpy and heat capacity are the ideal gas's, of T alone: a flash whose pressure is an unknown
    // of a solve and its stream, at one temperature, share their points.
    const bool anyPressure = state == PhaseType::vapor && kind != PureProperty::entropy;
    const auto holds = [&](const PurePoints& c) {
        return T.toDouble() == c.T && (anyPressure || P.toDouble() == c.P) && state == c.state &&
               (c.partials || !derivatives);
    };
    // The last state used comes first: a flash's own state and its stream's, which differ while the flash's
    // pressure is an unknown of a solve, take turns.
    auto& states = pure_[static_cast<int>(kind)];
    if (!holds(states[0])) std::swap(states[0], states[1]);
    PurePoints& cache = states[0];
    if (!holds(cache)) {
        cache.T = T.toDouble();
        cache.P = P.toDouble();
        cache.state = state;
        cache.partials = derivatives;
        for (PurePoint& point : cache.points) point.known = false;
    }
    // The scope stands, and T and P are its directions, only where slopes are worked out.
    std::optional<ActiveContext::Scope> local;
    std::optional<Value> t, p;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!present(x, i) || cache.points[i].known) continue;
        if (cache.partials && !local) {
            local.emplace(2);
            t = Value::inUnitsOf(Active(T.toDouble()), T);
            p = Value::inUnitsOf(Active(P.toDouble()), P);
            t->active().setActive(0);
            p->active().setActive(1);
        }
        const Value& atT = local ? *t : T;
        const Value& atP = local ? *p : P;
        if (state == PhaseType::vapor) {
            const RouteHeatVapor::Point v = components[i]->vaporPoint(kind, atT, atP);
            cache.points[i] = {v.value, local ? v.dT : 0.0, local ? v.dP : 0.0, 0.0, true};
        } else {
            const Value v = condensedProperty(*components[i], state, kind, atT, atP);
            v.same(__PRETTY_FUNCTION__, unitOf(kind));
            cache.points[i] = {v.toDouble(), local ? v.active().derivative(0) : 0.0,
                               local ? v.active().derivative(1) : 0.0, 0.0, true};
        }
    }
    return cache.points;
}

Value Ideal::mixtureSum_(const Value& P, const Value& T, const Vector& x, PhaseType state, PureProperty kind) const {
    std::vector<PurePoint>& pure = purePoints_(P, T, x, state, kind);
    const Value& unit = unitOf(kind);
    const bool mixing = kind == PureProperty::entropy;
    const double r = R.toDouble();
    double value = unit.toDouble(), dT = 0, dP = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!present(x, i)) continue;
        const double xi = x[i].toDouble();
        // The mixing term's logarithm goes with the point, for the slope below.
        if (mixing) pure[i].lnx = std::log(xi);
        value += mixing ? xi * (pure[i].value - r * pure[i].lnx) : xi * pure[i].value;
        dT += xi * pure[i].dT;
        dP += xi * pure[i].dP;
    }
    Active sum(value);
    if (Active::numdir() > 0) {
        // d(x f) = f dx + x df, and the mixing term -R x ln x adds -R (ln x + 1) dx.
        for (int i = 0; i < NCOMPONENTS; ++i) {
            if (!present(x, i)) continue;
            const double slope = mixing ? pure[i].value - r * (pure[i].lnx + 1) : pure[i].value;
            sum = Active::combine(value, 1, sum, slope, x[i].active());
        }
        sum = Active::combine(value, 1, sum, dT, T.active());
        sum = Active::combine(value, 1, sum, dP, P.active());
    }
    return Value::inUnitsOf(std::move(sum), unit);
}

const Value& Ideal::sumH_(PhaseType state, const Value& P, const Value& T, const Vector& x) const {
    H_ = mixtureSum_(P, T, x, state, PureProperty::enthalpy);
    return H_;
}

const Value& Ideal::sumS_(PhaseType state, const Value& P, const Value& T, const Vector& x) const {
    S_ = mixtureSum_(P, T, x, state, PureProperty::entropy);
    return S_;
}

const Value& Ideal::sumCp_(PhaseType state, const Value& P, const Value& T, const Vector& x) const {
    Cp_ = mixtureSum_(P, T, x, state, PureProperty::heatCapacity);
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
