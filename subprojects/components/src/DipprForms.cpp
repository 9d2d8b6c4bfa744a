#include "DipprForms.h"

#include <cmath>

namespace dipprForms {

Point eq100(const ParameterDippr7& p, double t) {
    const double y = p[0] + t * (p[1] + t * (p[2] + t * (p[3] + t * p[4])));
    const double dy = p[1] + t * (2 * p[2] + t * (3 * p[3] + t * 4 * p[4]));
    return {y, dy};
}

Point eq101(const ParameterDippr7& p, double t) {
    const double power = p[3] * std::pow(t, p[4]);
    const double y = std::exp(p[0] + p[1] / t + p[2] * std::log(t) + power);
    return {y, y * (-p[1] / (t * t) + p[2] / t + p[4] * power / t)};
}

Point eq102(const ParameterDippr7& p, double t) {
    const double denominator = 1 + p[2] / t + p[3] / (t * t);
    const double y = p[0] * std::pow(t, p[1]) / denominator;
    return {y, y * (p[1] / t + (p[2] / (t * t) + 2 * p[3] / (t * t * t)) / denominator)};
}

Point eq105(const ParameterDippr7& p, double t) {
    const double u = 1 - t / p[2];
    const double uD = std::pow(u, p[3]);
    const double y = p[0] / std::pow(p[1], 1 + uD);
    return {y, y * std::log(p[1]) * p[3] * uD / u / p[2]};
}

Point eq106(const ParameterDippr7& p, double t, double Tc) {
    const double tr = t / Tc;
    const double u = 1 - tr;
    if (u <= 0.0) return {0.0, 0.0}; // no surface above the critical point
    const double h = p[1] + tr * (p[2] + tr * (p[3] + tr * p[4]));
    const double dh = p[2] + tr * (2 * p[3] + tr * 3 * p[4]);
    const double y = p[0] * std::pow(u, h);
    return {y, y * (dh * std::log(u) - h / u) / Tc};
}

double extrapolateLow(Point atBound, double b, double t) {
    if (atBound.dy < 0) return atBound.y + atBound.dy * (t - b);
    if (atBound.y == 0.0) return 0.0;
    return atBound.y * std::exp(atBound.dy / atBound.y * (t - b));
}

double extrapolateHigh(Point atBound, double b, double t) {
    if (atBound.dy > 0) return atBound.y + atBound.dy * (t - b);
    if (atBound.y == 0.0) return 0.0;
    const double q = atBound.dy * b / atBound.y;
    return atBound.y * std::pow(t / b, q);
}

double extrapolateInverse(double yb, double s, double b, double t) {
    return yb * std::exp((1 / t - 1 / b) * s);
}

} // namespace dipprForms
