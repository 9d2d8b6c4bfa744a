#include <tarvo/core/Scaler.h>

#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <cmath>
#include <string>

using Tarvo::Utility::ScalingMode;

namespace {

// Below this distance from the centre the rational and arctangent-power mappings switch to their
// limit forms, which avoids 0/0.
constexpr double eps = 2.220446049250313e-14;

double sec2(double a) {
    const double c = std::cos(a);
    return 1 / (c * c);
}

} // namespace

Scaler::Scaler(const ScalingMode& mode, double xmin, double xmax, double ymin, double ymax) {
    setup(mode, xmin, xmax, ymin, ymax);
}

void Scaler::unsupportedMode(const char* signature, int mode) {
    throw ErrorSmartEnum(Tarvo::Utility::shortFunctionName(signature), "scaling mode", std::to_string(mode));
}

void Scaler::setup(const ScalingMode& mode, double xmin, double xmax, double ymin, double ymax) {
    mode_ = static_cast<int>(mode);
    xmin_ = xmin;
    xmax_ = xmax;
    ymin_ = ymin;
    ymax_ = ymax;
    xm_ = (xmin + xmax) / 2;
    ym_ = (ymin + ymax) / 2;
    dx_ = xmax - xmin;
    dy_ = ymax - ymin;

    if (xmin == xmax) throw ErrorScaler(TARVO_FUNCTION, "xmin and xmax must be different");
    if (ymin == ymax) throw ErrorScaler(TARVO_FUNCTION, "ymin and ymax must be different");

    switch (mode) {
    case ScalingMode::noscaling:
    case ScalingMode::linear:
        break;
    case ScalingMode::power:
        if (xmin == 0)
            throw ErrorScaler(TARVO_FUNCTION,
                              "xmin must be non-null with Tarvo::Utility::ScalingMode::power");
        if (xmax == 0)
            throw ErrorScaler(TARVO_FUNCTION,
                              "xmax must be non-null with Tarvo::Utility::ScalingMode::power");
        if (!(xmin * xmax > 0))
            throw ErrorScaler(
                TARVO_FUNCTION,
                "xmin and xmax must have the same sign with Tarvo::Utility::ScalingMode::power");
        if (ymin == 0)
            throw ErrorScaler(TARVO_FUNCTION,
                              "ymin must be non-null with Tarvo::Utility::ScalingMode::power");
        if (ymax == 0)
            throw ErrorScaler(TARVO_FUNCTION,
                              "ymax must be non-null with Tarvo::Utility::ScalingMode::power");
        if (!(ymin * ymax > 0))
            throw ErrorScaler(
                TARVO_FUNCTION,
                "ymin and ymax must have the same sign with Tarvo::Utility::ScalingMode::power");
        c_ = std::log(ymin / ymax) / std::log(xmin / xmax);
        d_ = 1 / c_;
        break;
    case ScalingMode::arctangent:
        // tan reaches dy/2 exactly at the bounds: X spans [ymin, ymax].
        c_ = std::atan(dy_ / 2);
        break;
    case ScalingMode::arctangentExclusive:
        // tan reaches its poles at the bounds: X spans the real line.
        c_ = 1.5707963267948966;
        break;
    case ScalingMode::arctangentpower:
        c_ = std::atan(dy_ / 2);
        e_ = 1.5;
        break;
    case ScalingMode::rational:
        c_ = dy_ / 10;
        break;
    case ScalingMode::log:
        if (xmin == 0)
            throw ErrorScaler(TARVO_FUNCTION, "xmin must be non-null with Tarvo::Utility::ScalingMode::log");
        if (xmax == 0)
            throw ErrorScaler(TARVO_FUNCTION, "xmax must be non-null with Tarvo::Utility::ScalingMode::log");
        if (!(xmin * xmax > 0))
            throw ErrorScaler(TARVO_FUNCTION,
                              "xmin and xmax must have the same sign with Tarvo::Utility::ScalingMode::log");
        break;
    default:
        unsupportedMode(__PRETTY_FUNCTION__, mode_);
    }
}

void Scaler::setup(double ymin, double ymax) {
    setup(mode(), xmin_, xmax_, ymin, ymax);
}

double Scaler::X(double v) const {
    switch (mode()) {
    case ScalingMode::noscaling:
        return v;
    case ScalingMode::linear:
        return (v - xmin_) / dx_ * dy_ + ymin_;
    case ScalingMode::power:
        return ymax_ * std::pow(v / xmax_, c_);
    case ScalingMode::arctangent:
    case ScalingMode::arctangentExclusive:
        return 0.5 * dy_ + ymin_ + std::tan(2 * (v - xm_) / dx_ * c_);
    case ScalingMode::arctangentpower: {
        const double b = 2 * std::tan(2 * (v - xm_) / dx_ * c_) / dy_;
        const double m = 0.5 * dy_ + ymin_;
        return b > 0 ? m + dy_ * std::pow(b, e_) * 0.5 : m - dy_ * std::pow(-b, e_) * 0.5;
    }
    case ScalingMode::rational:
        return ym_ + (v - xm_) * c_ / ((v - xmin_) * (xmax_ - v));
    case ScalingMode::log:
        return (ymax_ - ymin_) * std::log(v / xmin_) / std::log(xmax_ / xmin_) + ymin_;
    default:
        unsupportedMode(__PRETTY_FUNCTION__, mode_);
    }
}

double Scaler::x(double v) const {
    switch (mode()) {
    case ScalingMode::noscaling:
        return v;
    case ScalingMode::linear:
        return dx_ * (v - ymin_) / dy_ + xmin_;
    case ScalingMode::power:
        return xmax_ * std::pow(v / ymax_, d_);
    case ScalingMode::arctangent:
    case ScalingMode::arctangentExclusive:
        return std::atan(v - ymin_ - 0.5 * dy_) * dx_ / c_ * 0.5 + xm_;
    case ScalingMode::arctangentpower: {
        const double q = 2 * (v - ymin_ - 0.5 * dy_) / dy_;
        const double s = q < 0 ? -std::pow(-q, 1 / e_) : std::pow(q, 1 / e_);
        return std::atan(s * dy_ * 0.5) * dx_ / c_ * 0.5 + xm_;
    }
    case ScalingMode::rational: {
        // The root of the quadratic that lies inside the bounds.
        const double w = v - ym_;
        if (std::fabs(w) < eps) return xm_;
        const double r = c_ / w / dx_;
        return r > 0 ? xm_ + 0.5 * dx_ * (std::sqrt(r * r + 1) - r)
                     : xm_ + 0.5 * dx_ * (-r - std::sqrt(r * r + 1));
    }
    case ScalingMode::log: {
        const double L = std::log(xmax_ / xmin_);
        return xmin_ * std::exp(L * v / (ymax_ - ymin_) - ymin_ * L / (ymax_ - ymin_));
    }
    default:
        unsupportedMode(__PRETTY_FUNCTION__, mode_);
    }
}

double Scaler::dX(double v) const {
    switch (mode()) {
    case ScalingMode::noscaling:
        return 1;
    case ScalingMode::linear:
        return dy_ / dx_;
    case ScalingMode::power:
        return std::pow(v / xmax_, c_) * ymax_ * c_ / v;
    case ScalingMode::arctangent:
    case ScalingMode::arctangentExclusive:
        return sec2((v - xm_) * 2 * c_ / dx_) * 2 * c_ / dx_;
    case ScalingMode::arctangentpower: {
        // At the centre the closed form is 0/0: a shift of 100 eps keeps it finite.
        double w = v - xm_;
        if (std::fabs(w) < eps) w = v + 2.220446049250313e-13 - xm_;
        const double a = 2 * c_ * w / dx_;
        const double t = std::tan(a);
        const double b = t / dy_;
        return b >= 0 ? sec2(a) * dy_ * e_ * std::pow(2, e_) * c_ * std::pow(b, e_) / (dx_ * t)
                      : sec2(a) * -dy_ * e_ * std::pow(2, e_) * c_ * std::pow(-b, e_) / (dx_ * t);
    }
    case ScalingMode::rational:
        return c_ / ((xmax_ - v) * (v - xmin_)) + (v - xm_) * c_ / ((xmax_ - v) * (xmax_ - v) * (v - xmin_)) -
               (v - xm_) * c_ / ((v - xmin_) * (v - xmin_) * (xmax_ - v));
    case ScalingMode::log:
        return (ymax_ - ymin_) / (v * std::log(xmax_ / xmin_));
    default:
        unsupportedMode(__PRETTY_FUNCTION__, mode_);
    }
}

double Scaler::dx(double v) const {
    switch (mode()) {
    case ScalingMode::noscaling:
        return 1;
    case ScalingMode::linear:
        return dx_ / dy_;
    case ScalingMode::power:
        return std::pow(v / ymax_, d_) * xmax_ * d_ / v;
    case ScalingMode::arctangent:
    case ScalingMode::arctangentExclusive: {
        const double u = v - 0.5 * dy_ - ymin_;
        return dx_ / ((1 + u * u) * c_) * 0.5;
    }
    case ScalingMode::arctangentpower:
        return 1 / dX(x(v));
    case ScalingMode::rational: {
        const double w = v - ym_;
        if (std::fabs(w) < eps) // the limit at the centre, dx^2 / (4 c)
            return (4 * xm_ * xmin_ - 4 * xmax_ * xmin_ + 4 * xm_ * xmax_ - 4 * xm_ * xm_) / c_ * 0.25;
        const double r = c_ / w / dx_;
        return 0.5 * dx_ * (std::fabs(r) / std::sqrt(r * r + 1) - 1) * (-c_ / (w * w * dx_));
    }
    case ScalingMode::log: {
        const double L = std::log(xmax_ / xmin_);
        return xmin_ * L / (ymax_ - ymin_) * std::exp(L * v / (ymax_ - ymin_) - ymin_ * L / (ymax_ - ymin_));
    }
    default:
        unsupportedMode(__PRETTY_FUNCTION__, mode_);
    }
}
