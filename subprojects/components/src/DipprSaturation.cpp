#include <tarvo/components/DipprSaturation.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include "UnitValues.h"

#include <cassert>
#include <cmath>

using namespace componentUnits;

namespace {

// The gas constant where the extrapolation below the range works on plain numbers, J/(kmol*K).
constexpr double gasConstant = 8314.4;

// ln P of the Antoine form with its first and second derivative in t.
struct LogPressure {
    double lnP, L1, L2;
};

LogPressure antoineForm(const ParameterAntoine& a, double t) {
    const double B = a[1], C = a[2], D = a[3], E = a[4], F = a[5], G = a[6];
    const double tC = t + C;
    const double power = F * std::pow(t, G); // F t^G
    return {a[0] + B / tC + D * t + E * std::log(t) + power, G * power / t - B / (tC * tC) + E / t + D,
            G * (G - 1) * power / (t * t) + 2 * B / (tC * tC * tC) - E / (t * t)};
}

} // namespace

AntoineSaturation::AntoineSaturation(const ParameterAntoine& antoine, const Value& dhv0)
    : antoine_(antoine), dhv0_(dhv0.checkuom("J/kg")) {
    const double Tmin = antoine_[7], Tmax = antoine_[8];
    if (antoine_[0] == 0.0 || Tmin <= 0.0 || Tmax <= 0.0) return; // no vapor pressure, or psat will object
    // Clapeyron with the ideal-gas vapor and no liquid volume gives the heat Hm at Tmin; below it the heat
    // runs linearly from Hm to dhv0 at 0 K: d ln P / dt = (a t - b) / (R t^2) with b = a Tmin - Hm = -dhv0.
    const LogPressure low = antoineForm(antoine_, Tmin);
    const double Hm = gasConstant * Tmin * Tmin * low.L1;
    lnPmin_ = low.lnP;
    a_ = (Hm - dhv0_) / Tmin;
    b_ = a_ * Tmin - Hm;
    // Above the range ln P runs on linearly in 1/T with the slope at Tmax.
    const LogPressure high = antoineForm(antoine_, Tmax);
    lnPmax_ = high.lnP;
    m_ = high.L1 * Tmax * Tmax;
}

Value AntoineSaturation::psat(const Value& T, double* dpsatdt, double* d2psatdt2) const {
    const double t = T.toDouble();
    if (antoine_[0] == 0.0 || t <= 0.0) {
        if (dpsatdt) *dpsatdt = 0.0;
        if (d2psatdt2) *d2psatdt2 = 0.0;
        return 0.0 * Pa;
    }
    assert(antoine_[7] > 0.0);
    assert(antoine_[8] > 0.0);
    assert(T.toDouble() > 0.0);
    const double Tmin = antoine_[7], Tmax = antoine_[8];
    double p, d1, d2;
    if (t < Tmin) {
        p = std::exp(lnPmin_ + (a_ * std::log(t / Tmin) + b_ / t - b_ / Tmin) / gasConstant);
        const double L1 = (a_ / t - b_ / (t * t)) / gasConstant;
        const double L2 = (-a_ / (t * t) + 2 * b_ / (t * t * t)) / gasConstant;
        d1 = p * L1;
        d2 = p * (L1 * L1 + L2);
    } else if (t < Tmax) {
        const LogPressure f = antoineForm(antoine_, t);
        p = std::exp(f.lnP);
        d1 = p * f.L1;
        d2 = p * (f.L1 * f.L1 + f.L2);
    } else {
        p = std::exp(lnPmax_ + m_ * (1 / Tmax - 1 / t));
        d1 = p * m_ / (t * t);
        d2 = p * m_ * m_ / (t * t * t * t) - 2 * p * m_ / (t * t * t);
    }
    if (dpsatdt) *dpsatdt = d1;
    if (d2psatdt2) *d2psatdt2 = d2;
    return ofTemperature(p, d1, T, Pa);
}

Value AntoineSaturation::dhvl(const Value& T, double* derT) const {
    try {
        double dps, d2ps;
        const Value ps = psat(T, &dps, &d2ps);
        return dhvlAt_(T, ps, dps, d2ps, derT);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value AntoineSaturation::dhvlAt_(const Value& T, const Value& ps, double dps, double d2ps,
                                 double* derT) const {
    static const Value JPerKg(1.0, "J/kg");
    if (ps.toDouble() < 1e-100) {
        // No vapor pressure left to differentiate: the heat of the catalogue.
        if (derT) *derT = 0.0;
        return dhv0_ * JPerKg * mw();
    }
    double dRhovdT, dRhovdP, dRhol;
    const Value vv = 1.0 / rhov(T, ps, &dRhovdT, &dRhovdP);
    const Value vl = 1.0 / rhol(T, ps, &dRhol);
    if (derT) {
        const double t = T.toDouble(), v = vv.toDouble(), l = vl.toDouble(), dv = v - l;
        const double dRhov = dRhovdT + dRhovdP * dps; // along the saturation line
        *derT = dps * dv + t * dv * d2ps + t * dps * (dRhol * l * l - dRhov * v * v);
    }
    // Clapeyron; dpsat/dT carries its own change, so that the derivatives follow the value.
    return T * ofTemperature(dps, d2ps, T, PaPerK) * (vv - vl);
}

double AntoineSaturation::dhvlSlope_(double t) const {
    double dps, d2ps, slope;
    const Value T(t, "K");
    const Value ps = psat(T, &dps, &d2ps);
    dhvlAt_(T, ps, dps, d2ps, &slope);
    return slope;
}

Value AntoineSaturation::hl(const Value& T, const Value& P) const {
    try {
        const Value TT = T - zeroK;
        static_cast<void>(P - zeroPa); // units check only: the saturated liquid does not depend on P
        double dps, d2ps;
        const Value ps = psat(TT, &dps, &d2ps);
        return hv(TT, ps) - dhvlAt_(TT, ps, dps, d2ps, nullptr);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value AntoineSaturation::sl(const Value& T, const Value& P) const {
    try {
        const Value TT = T - zeroK;
        return sv(TT, P) - dhvl(TT) / TT;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value AntoineSaturation::cpl(const Value& T, const Value& P) const {
    try {
        const Value TT = T - zeroK;
        static_cast<void>(P - zeroPa);
        double derT;
        dhvl(TT, &derT);
        // The slope of cpl needs the second derivative of dhvl: a central difference of the first, taken
        // only when some derivative is asked for.
        double slope = 0.0;
        if (Active::numdir() > 0) {
            const double t = TT.toDouble(), h = 1e-4 * t;
            slope = (dhvlSlope_(t + h) - dhvlSlope_(t - h)) / (2 * h);
        }
        return cpv(TT, P0) - ofTemperature(derT, slope, TT, JPerKmolK);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

Value pdippr::hv(const Value& T, const Value& P) const {
    assert(heatVapor_ != nullptr);
    return heatVapor_->hv(T, P);
}

Value pdippr::sv(const Value& T, const Value& P) const {
    assert(heatVapor_ != nullptr);
    return heatVapor_->sv(T, P);
}

Value pdippr::cpv(const Value& T, const Value& P) const {
    assert(heatVapor_ != nullptr);
    return heatVapor_->cpv(T, P);
}

Value pdippr::rhol(const Value& T, const Value& P, double* derT) const {
    assert(volumeLiquid_ != nullptr);
    return volumeLiquid_->rhol(T, P, derT);
}

void pdippr::forwardTo(std::unique_ptr<RouteHeatVapor> heatVapor,
                       std::unique_ptr<RouteVolumeLiquid> volumeLiquid) {
    heatVapor_ = std::move(heatVapor);
    volumeLiquid_ = std::move(volumeLiquid);
}
