#ifndef TARVO_COMPONENTS_SRC_DIPPRFORMS_H
#define TARVO_COMPONENTS_SRC_DIPPRFORMS_H

#include <tarvo/components/DipprParameters.h>

// The correlation forms of the fluid routes on plain doubles, t in K, each with its derivative in t,
// and the rules that carry a correlation beyond the range of its record.
namespace dipprForms {

struct Point {
    double y;  // value
    double dy; // derivative in t
};

Point eq100(const ParameterDippr7& p, double t); // A + B t + C t^2 + D t^3 + E t^4
Point eq101(const ParameterDippr7& p, double t); // exp(A + B/t + C ln t + D t^E)
Point eq102(const ParameterDippr7& p, double t); // A t^B / (1 + C/t + D/t^2)
Point eq105(const ParameterDippr7& p, double t); // A / B^(1 + (1 - t/C)^D)
// A (1 - tr)^(B + C tr + D tr^2 + E tr^3), tr = t / Tc.
Point eq106(const ParameterDippr7& p, double t, double Tc);

// Below the lower bound b: linear if the correlation rises towards b, otherwise exponential, so that a
// positive value stays positive.
double extrapolateLow(Point atBound, double b, double t);
// Above the upper bound b: linear if the correlation rises there, otherwise a power of t / b.
double extrapolateHigh(Point atBound, double b, double t);
// ln y continued linearly in 1/t from the bound b, with slope s = d ln y / d(1/t) at b.
double extrapolateInverse(double yb, double s, double b, double t);

} // namespace dipprForms

#endif
