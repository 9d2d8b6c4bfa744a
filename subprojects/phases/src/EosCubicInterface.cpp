#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/EosCubicInterface.h>

using Tarvo::Utility::PhaseType;

namespace Phase::EosCubic {

namespace {
// Whether a phase carries anything. One that does not takes the state of the equimolar mixture, rather
// than a division by 0.
// The unit of attractive parameters, whose square root has none in SI.
const Value& attractiveUnit() {
    static const Value unit(1.0, "Pa*m6/kmol2");
    return unit;
}

bool carries(const Vector& x) {
    for (const Value& f : x)
        if (f.toDouble() > 0) return true;
    return false;
}
} // namespace

Interface::Interface(double omegaA, double omegaB, double betaCritical, double delta1, double delta2)
    : omegaA(omegaA), omegaB(omegaB), delta1(delta1), delta2(delta2), betaCritical_(betaCritical),
      rootA_(NCOMPONENTS) {}

Value Interface::ac(int i) const {
    const ComponentGeneric& c = *components[i];
    return omegaA * R * R * c.Tc() * c.Tc() / c.Pc();
}

Value Interface::b(int i) const {
    const ComponentGeneric& c = *components[i];
    return omegaB * R * c.Tc() / c.Pc();
}

void Interface::precompute(const Value& T, const Vector& x) const {
    // Without interaction parameters sum_j x_j sqrt(a_i a_j) = sqrt(a_i) sum_j x_j sqrt(a_j): one sum of
    // square roots q, and a = q^2, instead of the double sum.
    const bool mixture = carries(x);
    Value s = 0.0, q, dq, d2q, covolume;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        Value da, d2a;
        const Value ai = a(i, T, da, d2a) / attractiveUnit();
        da /= attractiveUnit();
        d2a /= attractiveUnit();
        Value& root = rootA_[i] = sqrt(ai);
        if (i == 0) {
            // Zeros in the units of the sums.
            q = 0.0 * root;
            dq = 0.0 * da / root;
            d2q = 0.0 * d2a / root;
            covolume = 0.0 * b(i);
        }
        if (mixture && !(x[i].toDouble() > 0)) continue;
        const Value& xi = mixture ? x[i] : one;
        const Value droot = da / (2.0 * root);
        s += xi;
        q += xi * root;
        dq += xi * droot;
        d2q += xi * (0.5 * d2a - droot * droot) / root;
        covolume += xi * b(i);
    }
    q /= s;
    dq /= s;
    d2q /= s;
    Amix = q * q * attractiveUnit();
    dAmixdT = 2.0 * q * dq * attractiveUnit();
    d2AmixdT2 = 2.0 * (dq * dq + q * d2q) * attractiveUnit();
    Bmix = covolume / s;
}

void Interface::estimate(const Value& P, const Value& T, const Vector& x, PhaseType type) {
    precompute(T, x);
    if (type == PhaseType::vapor)
        beta = P / density(one) / R / T;
    else
        beta = 2.0 / (2.0 + T / pseudoCriticalTemperature(x));
}

Value Interface::betac(const Vector&) const { return Value(betaCritical_); }

Value Interface::pressure(const Value& reduced, const Value& T) const {
    const Value& bm = Bmix;
    return R * T * reduced / (bm * (1.0 - reduced)) -
           Amix * reduced * reduced / (bm * bm * (1.0 + delta1 * reduced) * (1.0 + delta2 * reduced));
}

Value Interface::dpdbeta(const Value& reduced, const Value& T) const {
    const Value& bm = Bmix;
    const Value gap = 1.0 - reduced;
    const Value product = (1.0 + delta1 * reduced) * (1.0 + delta2 * reduced);
    return R * T / (bm * gap * gap) -
           Amix * reduced * (2.0 + (delta1 + delta2) * reduced) / (bm * bm * product * product);
}

Value Interface::density(const Value& reduced) const { return reduced / Bmix; }

Value Interface::pseudoCriticalTemperature(const Vector& x) const {
    const bool mixture = carries(x);
    Value s = 0.0, sum = 0.0 * components[0]->Tc();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (mixture && !(x[i].toDouble() > 0)) continue;
        const Value& xi = mixture ? x[i] : one;
        s += xi;
        sum += xi * components[i]->Tc();
    }
    return sum / s;
}

Value Interface::eos(const Value& v, const Value& T) const {
    return R * T / (v - Bmix) - Amix / ((v + delta1 * Bmix) * (v + delta2 * Bmix));
}

Value Interface::deosdv(const Value& v, const Value& T) const {
    const Value gap = v - Bmix;
    const Value product = (v + delta1 * Bmix) * (v + delta2 * Bmix);
    return -R * T / (gap * gap) + Amix * (2.0 * v + (delta1 + delta2) * Bmix) / (product * product);
}

Value Interface::deosdT(const Value& v, const Value&) const {
    return R / (v - Bmix) - dAmixdT / ((v + delta1 * Bmix) * (v + delta2 * Bmix));
}

Value Interface::attraction_(const Value& v) const {
    if (delta1 == delta2) return 1.0 / (v + delta1 * Bmix);
    return log((v + delta1 * Bmix) / (v + delta2 * Bmix)) / ((delta1 - delta2) * Bmix);
}

void Interface::preparefugacity_eos(const Value& P, const Value& T, std::vector<Value>& lnphi) const {
    const Value v = Bmix / beta;
    const Value RT = R * T;
    const Value Z = P * v / RT;
    // -ln(Z (1 - b / v)), written with the stored density in place of v.
    const Value repulsion = -log(P * (v - Bmix) / RT);
    const Value attraction = Amix * attraction_(v) / RT;
    const Value q = sqrt(Amix / attractiveUnit());
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const Value share = b(i) / Bmix;
        lnphi[i] = share * (Z - 1.0) + repulsion - attraction * (2.0 * rootA_[i] / q - share);
    }
}

Value Interface::enthalpyDeparture(const Value& P, const Value& T) const {
    const Value v = Bmix / beta;
    return (T * dAmixdT - Amix) * attraction_(v) + P * v - R * T;
}

Value Interface::entropyDeparture(const Value& P, const Value& T) const {
    const Value v = Bmix / beta;
    return R * log(P * (v - Bmix) / (R * T)) + dAmixdT * attraction_(v);
}

Value Interface::heatCapacityDeparture(const Value& T) const {
    const Value v = Bmix / beta;
    const Value dPdT = deosdT(v, T);
    return T * d2AmixdT2 * attraction_(v) - T * dPdT * dPdT / deosdv(v, T) - R;
}

} // namespace Phase::EosCubic
