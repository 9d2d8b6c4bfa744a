#include <tarvo/components/DipprParameters.h>

#include <cmath>

ParameterDippr7::ParameterDippr7(double A, double B, double C, double D, double E, double Tmin, double Tmax)
    : v_{A, B, C, D, E, Tmin, Tmax} {
    for (double elem : v_)
        assert(elem < 1E34);
    assert(v_[5] != 0.0);
    assert(v_[6] != 0.0);
}

double ParameterVolp::eval(double x) const {
    // A temperature at or below 0 K has no logarithm: NaN, which a solver's step backs off from.
    if (!(x > 0.0)) return std::nan("");
    const double l = std::log(x);
    double sum = 0.0;
    for (auto c = c_.rbegin(); c != c_.rend(); ++c)
        sum = sum * l + *c;
    return sum;
}

Value ParameterVolp::eval(const Value& x) const {
    x.dimensionless(__PRETTY_FUNCTION__);
    if (!(x.toDouble() > 0.0)) return Value(Active::chain(std::nan(""), std::nan(""), x.active()));
    const double l = std::log(x.toDouble());
    double sum = 0.0, slope = 0.0; // the polynomial and its derivative in ln x, by Horner
    for (auto c = c_.rbegin(); c != c_.rend(); ++c) {
        slope = slope * l + sum;
        sum = sum * l + *c;
    }
    return Value(Active::chain(sum, slope / x.toDouble(), x.active()));
}

Value ParameterHenry::pressure(const Value& c, const Value& T) const {
    static const Value kelvin(1.0, "K");
    const double waterMw = 18.0153; // kg/kmol
    return c / (kH_ * waterMw * exp(B_ * kelvin * (1.0 / T - 1.0 / T0)));
}
