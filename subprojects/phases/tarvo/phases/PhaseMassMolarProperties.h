#ifndef TARVO_PHASES_PHASEMASSMOLARPROPERTIES_H
#define TARVO_PHASES_PHASEMASSMOLARPROPERTIES_H

#include <tarvo/phases/PhaseMassMolar.h>

namespace Phase {

// A phase with the properties that a thermodynamic model gives it. The model's answers are molar; the
// items hold them beside the mass-based ones. The balances keep the volume flow consistent with rho.
class MassMolarProperties : public MassMolar {
public:
    MassMolarProperties(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                        Persistent* parent, Persistent* root);

    void calculateMw_() override;
    void calculateM_() override;
    void calculateNx_() override;
    void calculateMx_() override;
    void calculateNw_() override;
    void calculateN_() override;

    // Density and heat capacity at (P, T); with writeH also enthalpy and entropy, which otherwise keep the
    // values that a balance gave them.
    void calculateProperties(const Value& P, const Value& T, bool writeH) override;

    Mass& operator+=(const Mass& rhs) override;
    Mass& operator-=(const Mass& rhs) override;
    Mass& operator*=(const Value& factor) override;

    // What a thermodynamic model answers: pressure from a molar density and a temperature (in either
    // order), molar density, enthalpy, heat capacity and entropy, transport properties, and the logarithm
    // of the fugacity coefficient of component i.
    virtual const Value& calculate_P(const Value& a, const Value& b) = 0;
    virtual const Value& calculate_rho(const Value& P, const Value& T) = 0;
    virtual const Value& calculate_H(const Value& P, const Value& T) = 0;
    virtual const Value& calculate_Cp(const Value& P, const Value& T) = 0;
    virtual const Value& calculate_S(const Value& P, const Value& T) = 0;
    // Whether those are the properties of the state alone, whatever was computed before (see GenericInterface).
    virtual bool propertiesOfStateAlone() const { return false; }
    virtual Value mu(const Value& P, const Value& T) = 0;
    virtual Value kappa(const Value& P, const Value& T) = 0;
    virtual Value sigma(const Value& P, const Value& T) = 0;
    virtual const Value& fugacity(int i) = 0;

    Quantity vdot{"vdot", "Volume flow", "m3/h", this, 10.0};
    Quantity v{"v", "Molar volume", "m3/kmol", this, 0.018};
    Quantity rho{"rho", "Mass Density", "kg/m3", this, 1000.0};
    Quantity h{"h", "Specific Enthalpy by mass", "J/kg", this, 18.0};
    Quantity H{"H", "Specific Enthalpy by moles", "J/kmol", this, 1.0};
    Quantity cp{"cp", "Specific Heat by mass", "J/kg/K", this, 4186.8};
    Quantity Cp{"Cp", "Specific Heat by moles", "J/kmol/K", this, 232.60000000000002};
    Quantity s{"s", "Specific Entropy by mass", "J/kg/K", this, 0.0};
    Quantity S{"S", "Specific Entropy by moles", "J/kmol/K", this, 0.0};
    Quantity g{"g", "Specific Gibbs free energy by mass", "J/kg", this, 0.0};

private:
    // vdot from mdot and rho, after every balance.
    void volumeFlow_();
    // h and s from H and S, after a change of the molar ones.
    void massSpecific_();
};

} // namespace Phase

#endif
