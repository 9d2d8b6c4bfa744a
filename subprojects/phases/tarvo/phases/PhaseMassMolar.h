#ifndef TARVO_PHASES_PHASEMASSMOLAR_H
#define TARVO_PHASES_PHASEMASSMOLAR_H

#include <tarvo/phases/PhaseMass.h>

namespace Phase {

// A phase balanced in moles as well as in mass. Its natural balance is Nx: molar flow and molar
// fractions given, everything else follows.
class MassMolar : public Mass {
public:
    MassMolar(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
              Persistent* root);

    void calculateMw_() override;
    void calculateM_() override;
    virtual void calculateNx_();
    virtual void calculateMx_();
    virtual void calculateNw_();
    virtual void calculateN_();

    int representation() const override { return static_cast<int>(Mode::Nx); }
    Value& totalFlow() override { return ndot; }
    Value& flow(int i) override { return ndotcomps[i]; }
    const Value& flow(int i) const override { return ndotcomps[i]; }
    Value& frac(int i) override { return x[i]; }
    QuantityVector& fracs() override { return x; }
    void calculateX(const Mode& mode) override;
    bool isPure() const override;

    Mass& operator+=(const Mass& rhs) override;
    Mass& operator-=(const Mass& rhs) override;
    Mass& operator*=(const Value& factor) override;

    // The molecular weight from the molar fractions, and from the mass fractions (0 if they are all 0).
    const Value& mwx() const;
    const Value& mww() const;

    Quantity mw{"mw", "molecular weight", "kg/kmol", this, 18.0};
    Quantity ndot{"ndot", "molar flow", "kmol/h", this, 10000.0 / 18.0};
    QuantityVector x;
    QuantityVector ndotcomps;

protected:
    Target presetTarget(const Mode& mode, const char* signature) override;

private:
    // The mass balance from the fractions w and mdot that are already set, as in Nw.
    void flowsFromMassFractions_();
    // Component flows from ndotcomps, then w from them, as the end of Nx and N.
    void massFromMolarFlows_();

    mutable Value mw_{0.0, "kg/kmol"};
    mutable Value mwInverse_{0.0, "kmol/kg"};
};

} // namespace Phase

#endif
