#ifndef TARVO_COMPONENTS_COMPONENTBASE_H
#define TARVO_COMPONENTS_COMPONENTBASE_H

#include <tarvo/components/ComponentInterface.h>

// The stored constants of a species. The arguments come from the compiled catalogue: units are checked
// (ErrorUnit), and implausible numbers stop the process, as they can only be a faulty entry.
class ComponentBase : public virtual ComponentInterface {
public:
    // mw kg/kmol, Pc Pa, Tc K, rhoc (critical mass density) kg/m3, diffvol and zc and omega
    // dimensionless, vb m3/kmol, dh0 and dg0 J/kmol.
    ComponentBase(const Value& mw, const Value& Pc, const Value& Tc, const Value& rhoc, const Value& diffvol,
                  const Value& vb, const Value& zc, const Value& dh0, const Value& dg0, const Value& omega);
    // For species without measured critical data (solids, lumped biochemical species): placeholder
    // critical constants far from any state the kernel meets, so that nothing treats them as near-critical.
    explicit ComponentBase(const Value& mw);

    const Value& mw() const override { return mw_; }
    const Value& Pc() const override { return Pc_; }
    const Value& Tc() const override { return Tc_; }
    // zc R Tc / Pc, whatever rhoc is.
    Value vc() const override;
    const Value& zc() const override { return zc_; }
    const Value& omega() const override { return omega_; }
    const Value& diffvol() const override { return diffvol_; }
    const Value& vb() const override { return vb_; }
    const Value& dh0() const override { return dh0_; }
    const Value& dg0() const override { return dg0_; }

private:
    void check_() const;

    Value mw_;
    Value Pc_;
    Value Tc_;
    Value rhoc_;
    Value diffvol_;
    Value vb_;
    Value zc_;
    Value dh0_;
    Value dg0_;
    Value omega_;
};

#endif
