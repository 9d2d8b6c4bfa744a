#include <tarvo/components/ListComponents.h>
#include <tarvo/components/Purecomps.h>
#include <tarvo/phases/PhaseIapws.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/Log.h>
#include <tarvo/value/ActiveContext.h>

#include <algorithm>
#include <cmath>

using Tarvo::Utility::PhaseType;

namespace {
constexpr int verbosityFile = -1;
using namespace Phase::Iapws95;

// The end of the start functions' range.
constexpr double estimateLimit = 2.2055e7; // Pa
// The least slope of the pressure in delta that counts as stable, over that of the ideal gas.
constexpr double leastSlope = 1.0 / 50.0;

const Value& molarGasConstant() {
    static const Value r(gasConstant * molecularWeight, "J/(kmol*K)");
    return r;
}
const Value& criticalMolarDensity() {
    static const Value rho(criticalDensity / molecularWeight, "kmol/m3");
    return rho;
}
const Value& criticalT() {
    static const Value T(criticalTemperature, "K");
    return T;
}

// Whether a holds the number and the derivatives of b in the directions of the present context.
bool sameState(const Active& a, const Active& b) {
    if (a.val() != b.val()) return false;
    for (int i = 0; i < Active::numdir(); ++i)
        if (a.derivative(i) != b.derivative(i)) return false;
    return true;
}

// The slope of the pressure in delta over that of the ideal gas, in plain numbers.
double slope(double delta, double tau) {
    const Helmholtz<double> r = residual(delta, tau);
    return 1 + 2 * delta * r.d + delta * delta * r.dd;
}

// The point of `leastSlope` between a stable lo and an unstable hi, given the slopes there less
// `leastSlope`, by false position with the Illinois change (the weight of an end that stays twice is
// halved): a few evaluations where a bisection to the same width takes forty.
double crossing(double lo, double flo, double hi, double fhi, double tau) {
    int kept = 0; // +1 when lo stayed in the last step, -1 when hi did
    for (int k = 0; k < 100 && std::fabs(hi - lo) > 1e-12 * hi; ++k) {
        const double x = (lo * fhi - hi * flo) / (fhi - flo);
        if (!(x != lo && x != hi)) break; // nothing left between them
        const double fx = slope(x, tau) - leastSlope;
        if (fx > 0) {
            lo = x, flo = fx;
            if (kept < 0) fhi *= 0.5;
            kept = -1;
        } else {
            hi = x, fhi = fx;
            if (kept > 0) flo *= 0.5;
            kept = 1;
        }
    }
    return lo;
}
} // namespace

namespace Phase {

double iapwsLiquidDensityEstimate(double T) {
    if (T < 275.0) return 1000.0;
    if (T > criticalTemperature) return criticalDensity;
    const double t = 275.0 / T;
    return (((((109273.0 * t - 448252.0) * t + 731265.0) * t - 592369.0) * t + 236737.0) * t - 35652.2) * t;
}

double iapwsSaturationPressureEstimate(double T) {
    if (T > criticalTemperature) return estimateLimit;
    const double u = 1 / T;
    return std::exp(((-3.64089e7 * u + 58408.1) * u - 4482.67) * u + 23.8159);
}

double iapwsSaturationTemperatureEstimate(double P) {
    if (P > estimateLimit) return criticalTemperature;
    const double v = std::log(P);
    return 1 / (((2.55258e-8 * v - 2.76373e-6) * v - 0.000148349) * v + 0.00471683);
}

Iapws::Iapws() {
    for (int i = 0; i < NCOMPONENTS; ++i)
        if (dynamic_cast<const purecomps::water*>(components[i])) waterIndex_ = i;
}

const Value& Iapws::water_(const Vector& x) const {
    if (waterIndex_ < 0) throw ErrorRunTime("Phase::Iapws", "IAPWS-95 phases hold water alone: no water among the components");
    for (int i = 0; i < NCOMPONENTS; ++i)
        if (i != waterIndex_ && x[i].toDouble() != 0)
            throw ErrorRunTime("Phase::Iapws", "IAPWS-95 phases hold water alone: " + components[i]->name + " is present");
    return x[waterIndex_];
}

void Iapws::initialize(const Vector&, const Value& rho, const Value&) {
    if (rho.toDouble() > 0) beta = rho / Value(criticalDensity, "kg/m3");
}

void Iapws::prepare(const Value& T, const Vector& x) { precompute(T, x); }

void Iapws::precompute(const Value& T, const Vector&) const {
    const bool dense = !Active::sparse();
    if (dense && precomputed_ && sameState(beta.active(), precomputedBeta_) && sameState(T.active(), precomputedT_))
        return;
    tau_ = criticalT() / T;
    ideal_ = Iapws95::ideal(beta.active(), tau_.active());
    residual_ = Iapws95::residual(beta.active(), tau_.active());
    precomputed_ = dense;
    if (dense) precomputedBeta_ = beta.active(), precomputedT_ = T.active();
}

void Iapws::estimate(const Value& P, const Value& T, const Vector&, PhaseType type) {
    if (type == PhaseType::vapor)
        beta = P / T / Value(gasConstant, "J/(kg*K)") / Value(criticalDensity, "kg/m3");
    else
        beta = iapwsLiquidDensityEstimate(T.toDouble()) / criticalDensity;
}

Value Iapws::betac(const Vector&) const { return one; }

Value Iapws::pressure(const Value& reduced, const Value& T) const {
    const Value tau = criticalT() / T;
    const Helmholtz<Active> r = Iapws95::residual(reduced.active(), tau.active());
    return criticalMolarDensity() * molarGasConstant() * T * reduced * (1.0 + reduced * Value(Active(r.d)));
}

Value Iapws::dpdbeta(const Value& reduced, const Value& T) const {
    const Value tau = criticalT() / T;
    const Helmholtz<Active> r = Iapws95::residual(reduced.active(), tau.active());
    const Value d(Active(r.d)), dd(Active(r.dd));
    return criticalMolarDensity() * molarGasConstant() * T * (1.0 + 2.0 * reduced * d + reduced * reduced * dd);
}

Value Iapws::density(const Value& reduced) const { return reduced * criticalMolarDensity(); }

Value Iapws::pseudoCriticalTemperature(const Vector&) const { return criticalT(); }

// The liquid reaches 1188 kg/m3 at 700 MPa (release, Table 7): 5 leaves room above.
double Iapws::betaMax() const { return 5.0; }

double Iapws::branchEnd(double T, PhaseType type) const {
    // Above the critical temperature every density is stable, and a phase of either type is the one
    // fluid there: a liquid bent below the critical density would report a density that isn't water's.
    if (T >= criticalTemperature) return type == PhaseType::vapor ? betaMax() : 0.0;
    const int k = type == PhaseType::vapor ? 0 : 1;
    if (endT_[k] == T) return end_[k];
    const double tau = criticalTemperature / T;
    double end = 1.0;
    // A walk in steps of a few percent finds the first density past the end, where the slope, less
    // `leastSlope`, has changed its sign; the critical density closes it.
    if (type == PhaseType::vapor) {
        // Up from half the saturated vapor's density as an ideal gas, towards the critical density.
        double hi = 0.5 * iapwsSaturationPressureEstimate(T) / T / gasConstant / criticalDensity, lo = hi;
        double fhi = slope(hi, tau) - leastSlope, flo = fhi;
        while (fhi > 0 && hi < 1.0) {
            lo = hi, flo = fhi;
            hi = std::min(1.25 * hi, 1.0);
            fhi = slope(hi, tau) - leastSlope;
        }
        if (!(fhi > 0)) end = crossing(lo, flo, hi, fhi, tau);
    } else {
        // Into the stable liquid first, then down towards the critical density.
        double hi = iapwsLiquidDensityEstimate(T) / criticalDensity;
        double fhi = slope(hi, tau) - leastSlope;
        while (hi < betaMax() && !(fhi > 0)) {
            hi *= 1.02;
            fhi = slope(hi, tau) - leastSlope;
        }
        double lo = hi, flo = fhi;
        while (flo > 0 && lo > 1.0) {
            hi = lo, fhi = flo;
            lo = std::max(0.95 * lo, 1.0);
            flo = slope(lo, tau) - leastSlope;
        }
        if (!(flo > 0)) end = crossing(hi, fhi, lo, flo, tau);
    }
    endT_[k] = T;
    end_[k] = end;
    return end;
}

bool Iapws::beyond_(double end, PhaseType type) const {
    return type == PhaseType::vapor ? beta.toDouble() > end : beta.toDouble() < end;
}

void Iapws::calculatePressureEos_(const Value& T, const Vector&, PhaseType type, Value& P) {
    const double end = branchEnd(T.toDouble(), type);
    corrected = beyond_(end, type);
    if (!corrected) {
        P = pressure(beta, T);
        return;
    }
    const Value e(end), Pend = pressure(e, T), slopeEnd = dpdbeta(e, T);
    // A liquid whose branch ends at a positive pressure goes on as Pend (beta / end)^k, with the value
    // and the slope of the end: a tangent could cross zero pressure at a positive beta, and a pressure
    // below that would have no root. k is at least 1, or the flat isotherms just above the critical
    // temperature would put the root of a low pressure below the smallest number.
    if (type != PhaseType::vapor && Pend.toDouble() > 0)
        P = Pend * exp((slopeEnd * e / Pend).toDouble() > 1 ? slopeEnd * e / Pend * log(beta / e) : log(beta / e));
    else
        P = Pend + slopeEnd * (beta - e);
    TARVO_LOG(4) << "corrected pressure = " << P.toDouble() << " beyond delta = " << end;
}

Value Iapws::calculateResiduals(const Value& P, const Value& T, const Vector& x, PhaseType type) {
    if (type == PhaseType::vapor) return EosInterface::calculateResiduals(P, T, x, type);
    Value seen;
    calculatePressureEos_(T, x, type, seen);
    return (seen - P) / (P + criticalMolarDensity() * molarGasConstant() * T);
}

double Iapws::plainResidual(double reduced, const Value& P, const Value& T, const Vector& x, PhaseType type) {
    ActiveContext::Scope none(0);
    return EosInterface::plainResidual(reduced, P, T, x, type);
}

void Iapws::preparefugacity(const Value& P, const Value& T, const Vector&, const Value&) const {
    for (Value& l : lnphi_) l = 0.0;
    // ln phi = phir + delta phir_delta + ln(rho R T / P): the fugacity rho R T exp(phir + delta phir_delta)
    // of the state at delta over the flash's pressure, so that a liquid and a vapor at the same T and P
    // have equal ln phi exactly where the release's saturation condition holds. A phase beyond the end
    // of its branch takes the state at that end: a liquid keeps its fugacity there, the least of the
    // liquid branch, which lies above a stable vapor's; a vapor's grows as exp(2 v (P - Pend) / RT), the
    // growth at the end doubled, faster than a compressed liquid's.
    const double end = branchEnd(T.toDouble(), phaseType());
    const bool bent = beyond_(end, phaseType());
    const Value delta = bent ? Value(end) : beta;
    const Value tau = criticalT() / T;
    const Helmholtz<Active> r = Iapws95::residual(delta.active(), tau.active());
    const Value rho = density(delta), RT = molarGasConstant() * T;
    Value& l = lnphi_[waterIndex_];
    l = Value(Active(r.phi)) + delta * Value(Active(r.d)) + log(rho * RT / P);
    if (bent && phaseType() == PhaseType::vapor) {
        const Value Pend = pressure(delta, T);
        l += 2.0 * (P - Pend) / (rho * RT);
        TARVO_LOG(4) << "P / Pres = " << (P / Pend).toDouble() << " ratio = " << exp(l).toDouble();
    }
}

const Value& Iapws::calculate_P_(const Value& rho, const Value& T, const Vector& x, const Value&) const {
    water_(x);
    P_ = pressure(rho / criticalMolarDensity(), T);
    return P_;
}

const Value& Iapws::calculate_rho_(const Value&, const Value&, const Vector& x) const {
    water_(x);
    rho_ = density(beta);
    return rho_;
}

const Value& Iapws::calculate_H_(const Value&, const Value& T, const Vector& x) const {
    precompute(T, x);
    const Value tau_t(Active(ideal_.t + residual_.t)), d(Active(residual_.d));
    H_ = water_(x) * molarGasConstant() * (1.0 + tau_ * tau_t + beta * d) * T;
    return H_;
}

const Value& Iapws::calculate_S_(const Value&, const Value& T, const Vector& x) const {
    precompute(T, x);
    const Value tau_t(Active(ideal_.t + residual_.t)), phi(Active(ideal_.phi + residual_.phi));
    S_ = water_(x) * molarGasConstant() * (tau_ * tau_t - phi);
    return S_;
}

const Value& Iapws::calculate_Cp_(const Value&, const Value& T, const Vector& x) const {
    precompute(T, x);
    const Value tt(Active(ideal_.tt + residual_.tt)), d(Active(residual_.d)), dd(Active(residual_.dd)),
        dt(Active(residual_.dt));
    const Value numerator = 1.0 + beta * d - beta * tau_ * dt;
    Cp_ = water_(x) * molarGasConstant() *
          (-tau_ * tau_ * tt + numerator * numerator / (1.0 + 2.0 * beta * d + beta * beta * dd));
    return Cp_;
}

} // namespace Phase
