#include <tarvo/components/Barin.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include "UnitValues.h"

#include <cassert>
#include <cmath>

using namespace componentUnits;

namespace {

// The four properties of G(x) at x, each with its derivative in x.
struct Properties {
    double value[4];
    double slope[4];
};

Properties evaluate(const double* c, double x) {
    const double lnx = std::log(x), x2 = x * x, x3 = x2 * x, x4 = x3 * x;
    Properties p;
    const double cp = -c[2] - 2 * c[3] * x - 6 * c[4] * x2 - 12 * c[5] * x3 - 2 * c[6] / x2 - 6 * c[7] / x3;
    const double h =
        c[0] - c[2] * x - c[3] * x2 - 2 * c[4] * x3 - 3 * c[5] * x4 + 2 * c[6] / x + 3 * c[7] / x2;
    const double s =
        -c[1] - c[2] * (1 + lnx) - 2 * c[3] * x - 3 * c[4] * x2 - 4 * c[5] * x3 + c[6] / x2 + 2 * c[7] / x3;
    const double g =
        c[0] + c[1] * x + c[2] * x * lnx + c[3] * x2 + c[4] * x3 + c[5] * x4 + c[6] / x + c[7] / x2;
    p.value[ParameterBkk::heatCapacity] = cp;
    p.slope[ParameterBkk::heatCapacity] =
        -2 * c[3] - 12 * c[4] * x - 36 * c[5] * x2 + 4 * c[6] / x3 + 18 * c[7] / x4;
    p.value[ParameterBkk::enthalpy] = h;
    p.slope[ParameterBkk::enthalpy] = cp;
    p.value[ParameterBkk::entropy] = s;
    p.slope[ParameterBkk::entropy] = cp / x;
    p.value[ParameterBkk::freeEnergy] = g;
    p.slope[ParameterBkk::freeEnergy] = -s;
    return p;
}

} // namespace

ParameterBkk::ParameterBkk(double a, double b, double c, double d, double e, double f, double g, double h,
                           double xmin, double xmax)
    : c_{a, b, c, d, e, f, g, h}, xmin_(xmin), xmax_(xmax) {
    assert(xmin <= xmax);
    assert(xmin >= 0.0);
    assert(xmax >= 0.0);
    assert(xmax <= 5000.0);
    const Properties low = evaluate(c_, xmin_), high = evaluate(c_, xmax_);
    for (int i = 0; i < 4; ++i) {
        atBounds_[0][i] = low.value[i];
        atBounds_[1][i] = high.value[i];
    }
}

double ParameterBkk::operator[](int i) const {
    assert(i >= 0);
    assert(i < 8);
    return c_[i];
}

Active ParameterBkk::calculate_(Property property, const Active& x) const {
    assert(x.val() >= xmin_);
    assert(x.val() <= xmax_);
    const Properties p = evaluate(c_, x.val());
    return Active::chain(p.value[property], p.slope[property], x);
}

Active ParameterBkk::extrapolatesx_(Property property, const Active& x) const {
    assert(x.val() <= xmin_);
    return extrapolate_(property, x, 0);
}

Active ParameterBkk::extrapolatedx_(Property property, const Active& x) const {
    assert(x.val() >= xmax_);
    return extrapolate_(property, x, 1);
}

// With the heat capacity Cb of the bound b held constant: H(b) - Cb (b - x), S(b) - Cb ln(b / x), and
// G = H - x S.
Active ParameterBkk::extrapolate_(Property property, const Active& x, int bound) const {
    const double b = bound == 0 ? xmin_ : xmax_;
    const double* at = atBounds_[bound];
    const double cb = at[heatCapacity], v = x.val();
    const double h = at[enthalpy] - cb * (b - v);
    const double s = at[entropy] - cb * std::log(b / v);
    switch (property) {
    case heatCapacity:
        return Active::chain(cb, 0.0, x);
    case enthalpy:
        return Active::chain(h, cb, x);
    case entropy:
        return Active::chain(s, cb / v, x);
    case freeEnergy:
        return Active::chain(h - v * s, -s, x);
    }
    assert(false && "unknown Barin property");
    return Active();
}

GroupBkk::GroupBkk(std::initializer_list<ParameterBkk> records) {
    for (const ParameterBkk& record : records)
        push_(record);
}

void GroupBkk::push_(const ParameterBkk& record) {
    if (records_.empty() || record.xmin() == records_.back().xmax()) {
        records_.push_back(record);
    } else if (record.xmax() == records_.front().xmin()) {
        records_.insert(records_.begin(), record);
    } else {
        assert(false && "Inconsistent Barin parameter group");
    }
}

Active GroupBkk::calculate(ParameterBkk::Property property, const Active& x) const {
    assert(!records_.empty());
    if (x.val() < records_.front().xmin()) return records_.front().extrapolatesx_(property, x);
    if (x.val() > records_.back().xmax()) return records_.back().extrapolatedx_(property, x);
    for (const ParameterBkk& record : records_)
        if (x.val() <= record.xmax()) return record.calculate_(property, x);
    return records_.back().calculate_(property, x); // not reached: x lies in the last record
}

void GroupBkk::setDh0(const Value& dh0) {
    if (records_.size() != 1)
        throw ErrorRunTime(TARVO_FUNCTION,
                           "setDh0 only supported if the group contains only one parameter set");
    const double shift = dh0.checkuom("J/kmol") - calculate(ParameterBkk::enthalpy, T0.toDouble()).val();
    const ParameterBkk& r = records_.front();
    records_.front() =
        ParameterBkk(r[0] + shift, r[1], r[2], r[3], r[4], r[5], r[6], r[7], r.xmin(), r.xmax());
}

void GroupBkk::setCp(const Value& cp) {
    if (records_.size() != 1)
        throw ErrorRunTime(TARVO_FUNCTION,
                           "setCp only supported if the group contains only one parameter set");
    const double c = cp.checkuom("J/(kmol*K)"), t0 = T0.toDouble();
    const double h0 = calculate(ParameterBkk::enthalpy, t0).val();
    const double s0 = calculate(ParameterBkk::entropy, t0).val();
    // G = c0 + c1 x - c x ln x has H = c0 + c x and S = c (1 + ln x) - c1.
    const ParameterBkk& r = records_.front();
    records_.front() =
        ParameterBkk(h0 - c * t0, c * (1 + std::log(t0)) - s0, -c, 0, 0, 0, 0, 0, r.xmin(), r.xmax());
}

namespace {

// A property of the group at T, in `unit`; an error on the way names the route that asked.
Value property(const GroupBkk& group, ParameterBkk::Property property, const Value& T, const Value& unit,
               const char* route) {
    try {
        const Value TT = T - zeroK;
        return Value(group.calculate(property, TT.active())) * unit;
    } catch (Error& e) {
        e.append(Tarvo::Utility::shortFunctionName(route));
        throw;
    }
}

} // namespace

Value RouteHeatSolidBkk::hs(const Value& T, const Value&) const {
    return property(solid_, ParameterBkk::enthalpy, T, JPerKmol, __PRETTY_FUNCTION__);
}
Value RouteHeatSolidBkk::ss(const Value& T, const Value&) const {
    return property(solid_, ParameterBkk::entropy, T, JPerKmolK, __PRETTY_FUNCTION__);
}
Value RouteHeatSolidBkk::cps(const Value& T, const Value&) const {
    return property(solid_, ParameterBkk::heatCapacity, T, JPerKmolK, __PRETTY_FUNCTION__);
}

Value RouteHeatLiquidBkk::hl(const Value& T, const Value&) const {
    return property(liquid_, ParameterBkk::enthalpy, T, JPerKmol, __PRETTY_FUNCTION__);
}
Value RouteHeatLiquidBkk::sl(const Value& T, const Value&) const {
    return property(liquid_, ParameterBkk::entropy, T, JPerKmolK, __PRETTY_FUNCTION__);
}
Value RouteHeatLiquidBkk::cpl(const Value& T, const Value&) const {
    return property(liquid_, ParameterBkk::heatCapacity, T, JPerKmolK, __PRETTY_FUNCTION__);
}

Value RouteHeatLiquidDummySolidBkk::hs(const Value& T, const Value&) const {
    return property(solid_, ParameterBkk::enthalpy, T, JPerKmol, __PRETTY_FUNCTION__);
}
Value RouteHeatLiquidDummySolidBkk::ss(const Value& T, const Value&) const {
    return property(solid_, ParameterBkk::entropy, T, JPerKmolK, __PRETTY_FUNCTION__);
}
Value RouteHeatLiquidDummySolidBkk::cps(const Value& T, const Value&) const {
    return property(solid_, ParameterBkk::heatCapacity, T, JPerKmolK, __PRETTY_FUNCTION__);
}
