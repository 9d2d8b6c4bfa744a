#ifndef TARVO_CORE_SCALER_H
#define TARVO_CORE_SCALER_H

#include <tarvo/utility/SmartEnumerator.h>

// Maps one unknown between the model's number x and the number X that the solver walks in.
// The modes that map the bounded range [xmin, xmax] onto an unbounded one keep the solver inside the
// bounds without any constraint handling in the solver itself.
//
// A plain value, copied by value: it holds no pointer and allocates nothing.
class Scaler {
public:
    // No scaling, no ranges.
    Scaler() = default;
    Scaler(const Tarvo::Utility::ScalingMode& mode, double xmin, double xmax, double ymin, double ymax);

    // Raises ErrorScaler for ranges that the mode cannot map and ErrorSmartEnum for a mode outside the
    // enumeration; the fields are stored before the checks.
    void setup(const Tarvo::Utility::ScalingMode& mode, double xmin, double xmax, double ymin, double ymax);
    // Keeps the mode and the model's range [xmin, xmax]; takes a new solver range.
    void setup(double ymin, double ymax);

    // X from x, the model's number to the solver's.
    double X(double v) const;
    // x from X, the solver's number to the model's.
    double x(double v) const;
    // dX/dx at x = v.
    double dX(double v) const;
    // dx/dX at X = v: the factor of the chain rule from the model's Jacobian to the solver's.
    double dx(double v) const;

    Tarvo::Utility::ScalingMode mode() const { return static_cast<Tarvo::Utility::ScalingMode>(mode_); }
    double xmin() const { return xmin_; }
    double xmax() const { return xmax_; }
    double ymin() const { return ymin_; }
    double ymax() const { return ymax_; }

private:
    [[noreturn]] static void unsupportedMode(const char* signature, int mode);

    int mode_ = static_cast<int>(Tarvo::Utility::ScalingMode::noscaling);
    double xmin_ = 0, xmax_ = 0;
    double ymin_ = 0, ymax_ = 0;
    double c_ = 0;           // shape constant of the mode
    double d_ = 0;           // 1/c for power
    double e_ = 0;           // exponent of arctangentpower
    double xm_ = 0, ym_ = 0; // midpoints
    double dx_ = 0, dy_ = 0; // widths
};

#endif
