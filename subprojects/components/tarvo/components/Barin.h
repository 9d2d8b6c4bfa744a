#ifndef TARVO_COMPONENTS_BARIN_H
#define TARVO_COMPONENTS_BARIN_H

#include <tarvo/components/RouteInterfaces.h>

#include <vector>

// Thermochemical polynomials in the form of Barin's tables: the Gibbs energy of one temperature range,
// G(x) = c0 + c1 x + c2 x ln x + c3 x^2 + c4 x^3 + c5 x^4 + c6 / x + c7 / x^2, x in K, J/kmol, referred to
// the elements, and the heat capacity, enthalpy and entropy that follow from it.
class ParameterBkk {
public:
    enum Property { heatCapacity = 0, enthalpy = 1, entropy = 2, freeEnergy = 3 };

    ParameterBkk(double a, double b, double c, double d, double e, double f, double g, double h, double xmin,
                 double xmax);
    double operator[](int i) const;
    double xmin() const { return xmin_; }
    double xmax() const { return xmax_; }

    // The property at x inside the range, with the derivatives of x.
    Active calculate_(Property property, const Active& x) const;
    // Below the range: constant heat capacity from xmin.
    Active extrapolatesx_(Property property, const Active& x) const;
    // Above the range: constant heat capacity from xmax.
    Active extrapolatedx_(Property property, const Active& x) const;

private:
    Active extrapolate_(Property property, const Active& x, int bound) const;

    double c_[8];
    double xmin_;
    double xmax_;
    double atBounds_[2][4]; // the four properties at xmin and at xmax
};

// Records that together cover one temperature range of one phase, sorted by temperature.
class GroupBkk {
public:
    GroupBkk() = default;
    GroupBkk(std::initializer_list<ParameterBkk> records);
    // Adds a record that continues the group at its lower or upper end.
    void push_(const ParameterBkk& record);

    // The lowest record extrapolates below the group, the highest above it.
    Active calculate(ParameterBkk::Property property, const Active& x) const;

    // Shift the enthalpy so that it is dh0 at 298.15 K, keeping heat capacity and entropy.
    void setDh0(const Value& dh0);
    // Make the heat capacity the constant cp, keeping enthalpy and entropy at 298.15 K.
    void setCp(const Value& cp);

    const std::vector<ParameterBkk>& records() const { return records_; }

private:
    std::vector<ParameterBkk> records_;
};

class RouteHeatSolidBkk : public virtual RouteHeatSolid {
public:
    explicit RouteHeatSolidBkk(const GroupBkk& solid) : solid_(solid) {}
    Value hs(const Value& T, const Value& P) const override;
    Value ss(const Value& T, const Value& P) const override;
    Value cps(const Value& T, const Value& P) const override;

private:
    GroupBkk solid_;
};

class RouteHeatLiquidBkk : public virtual RouteHeatLiquid {
public:
    explicit RouteHeatLiquidBkk(const GroupBkk& liquid) : liquid_(liquid) {}
    Value hl(const Value& T, const Value& P) const override;
    Value sl(const Value& T, const Value& P) const override;
    Value cpl(const Value& T, const Value& P) const override;

private:
    GroupBkk liquid_;
};

// A species with data for the solid only, whose liquid (a dissolved salt, say) takes the same values.
class RouteHeatLiquidDummySolidBkk : public virtual RouteHeatLiquid, public virtual RouteHeatSolid {
public:
    explicit RouteHeatLiquidDummySolidBkk(const GroupBkk& solid) : solid_(solid) {}
    Value hl(const Value& T, const Value& P) const override { return hs(T, P); }
    Value sl(const Value& T, const Value& P) const override { return ss(T, P); }
    Value cpl(const Value& T, const Value& P) const override { return cps(T, P); }
    Value hs(const Value& T, const Value& P) const override;
    Value ss(const Value& T, const Value& P) const override;
    Value cps(const Value& T, const Value& P) const override;

private:
    GroupBkk solid_;
};

#endif
