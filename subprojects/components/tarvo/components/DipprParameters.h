#ifndef TARVO_COMPONENTS_DIPPRPARAMETERS_H
#define TARVO_COMPONENTS_DIPPRPARAMETERS_H

#include <tarvo/value/Value.h>

#include <cassert>
#include <initializer_list>
#include <vector>

// Coefficient records of the fluid correlations. Plain values, copied into the routes that use them.

// A, B, C, D, E of one correlation, then its range Tmin, Tmax in K.
class ParameterDippr7 {
public:
    ParameterDippr7(double A, double B, double C, double D, double E, double Tmin, double Tmax);
    double operator[](int i) const {
        assert(i >= 0 && i < 7);
        return v_[i];
    }

private:
    double v_[7];
};

// Extended Antoine vapor pressure, ln P[Pa] = A + B/(T + C) + D T + E ln T + F T^G, on Tmin..Tmax K.
class ParameterAntoine {
public:
    ParameterAntoine(double A, double B, double C, double D, double E, double F, double G, double Tmin,
                     double Tmax)
        : antoine_{A, B, C, D, E, F, G, Tmin, Tmax} {}
    double operator[](int i) const {
        assert(i >= 0 && i < 9);
        return antoine_[i];
    }

private:
    double antoine_[9];
};

// Solubility of a gas in water: kH' in mol/(kg*bar) at 298.15 K and its temperature coefficient
// B = d ln kH / d(1/T) in K. The record keeps kH' / 100. Without arguments: no Henry behaviour.
class ParameterHenry {
public:
    ParameterHenry() = default;
    ParameterHenry(double kH, double B) : kH_(kH / 100.0), B_(B) {}
    double kH() const { return kH_; }
    double B() const { return B_; }
    bool set() const { return kH_ != 0.0 || B_ != 0.0; }
    // The pressure that the dissolved gas exerts at unit mole fraction in water, c / (kH M exp(B (1/T -
    // 1/T0))), with M the molar mass of water that turns molality into mole fraction. The constant c
    // carries the unit of kH into Pa.
    Value pressure(const Value& c, const Value& T) const;

private:
    double kH_ = 0.0;
    double B_ = 0.0;
};

// A polynomial in ln x: c[0] + c[1] ln x + ... + c[n-1] (ln x)^(n-1), x a temperature in K taken as a
// pure number.
class ParameterVolp {
public:
    ParameterVolp(std::initializer_list<double> c) : c_(c) {}
    explicit ParameterVolp(std::vector<double> c) : c_(std::move(c)) {}
    double eval(double x) const;
    Value eval(const Value& x) const;
    int size() const { return static_cast<int>(c_.size()); }
    double operator[](int i) const {
        assert(i >= 0 && i < size());
        return c_[i];
    }

private:
    std::vector<double> c_;
};

#endif
