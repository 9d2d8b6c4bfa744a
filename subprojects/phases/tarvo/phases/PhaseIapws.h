#ifndef TARVO_PHASES_PHASEIAPWS_H
#define TARVO_PHASES_PHASEIAPWS_H

#include <tarvo/phases/EosInterface.h>
#include <tarvo/phases/Iapws95Helmholtz.h>
#include <tarvo/phases/PhaseIdeal.h>

namespace Phase {

// Approximations of water's liquid density (kg/m3), saturation pressure (Pa) and saturation temperature
// (K), of fixed form, that serve as starts only. They end at 2.2055e7 Pa, not at the release's critical
// pressure.
double iapwsLiquidDensityEstimate(double T);
double iapwsSaturationPressureEstimate(double T);
double iapwsSaturationTemperatureEstimate(double P);

// Pure water on the IAPWS-95 formulation. The density unknown of the flash, beta, is the reduced density
// delta = rho / 322 kg/m3, of the order of 3 for the liquid.
//
// Enthalpy and entropy keep the release's own reference: u = s = 0 for the saturated liquid at the
// triple point. The ideal phases of the kernel count from the elements' enthalpies of formation at
// 298.15 K instead: liquid water at 300 K and 1 atm is 2.878e8 J/kmol lower there than here. A flowsheet
// that joins water from both kinds of stream must not mix their enthalpies.
//
// The properties (pressure, density, enthalpy, entropy, heat capacity) throw if a component other than
// water is present. The set-up and the fugacities, which a stream calls while its phases still hold a
// start composition, read water's share alone.
class Iapws : public Ideal, public EosInterface {
public:
    Iapws();

    void initialize(const Vector& x, const Value& rho, const Value& mw) override;
    void prepare(const Value& T, const Vector& x) override;
    void preparefugacity(const Value& P, const Value& T, const Vector& x, const Value& total) const override;
    const Value& calculate_P_(const Value& rho, const Value& T, const Vector& x, const Value& total) const override;
    const Value& calculate_rho_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_H_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_S_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_Cp_(const Value& P, const Value& T, const Vector& x) const override;

    void precompute(const Value& T, const Vector& x) const override;
    void estimate(const Value& P, const Value& T, const Vector& x, PhaseType type) override;
    Value betac(const Vector& x) const override;
    Value pressure(const Value& reduced, const Value& T) const override;
    Value dpdbeta(const Value& reduced, const Value& T) const override;
    Value density(const Value& reduced) const override;
    Value pseudoCriticalTemperature(const Vector& x) const override;
    double betaMax() const override;
    // Where beta has left the stable branch of the phase's type, the pressure goes on smoothly from the
    // end of that branch, rising with beta, so that any positive pressure has a root: the flash may ask a vapor
    // for a state of compressed liquid, and a liquid for a superheated vapor.
    void calculatePressureEos_(const Value& T, const Vector& x, PhaseType type, Value& P) override;
    // A liquid's pressure moves by some 1e9 Pa per unit of delta: relative to a pressure of a few hundred
    // Pa, the rounding of delta alone would leave a residual above the flash's tolerance. Its residual is
    // relative to P plus rhoc R T instead; a vapor's stays relative to P, to keep its dilute density exact.
    Value calculateResiduals(const Value& P, const Value& T, const Vector& x, PhaseType type) override;
    // Without derivatives: the residual keeps no Values of its own.
    double plainResidual(double reduced, const Value& P, const Value& T, const Vector& x, PhaseType type) override;

    // The end of the stable branch of a phase of `type` at T: the reduced density where the slope of the
    // pressure in it falls to a fiftieth of the ideal gas's. Above the critical temperature, 0 for the
    // liquid and betaMax for the vapor: there either is the fluid at any density.
    double branchEnd(double T, PhaseType type) const;

    // The two parts of the reduced Helmholtz energy at the last precompute.
    const Iapws95::Helmholtz<Active>& idealPart() const { return ideal_; }
    const Iapws95::Helmholtz<Active>& residualPart() const { return residual_; }

private:
    // Throws unless water is the only component present in x; its molar fraction.
    const Value& water_(const Vector& x) const;
    // Whether beta is beyond the end of the branch of the phase's type.
    bool beyond_(double end, PhaseType type) const;

    int waterIndex_ = -1;
    mutable Value tau_{1.0};
    mutable Iapws95::Helmholtz<Active> ideal_, residual_;
    // The state of the parts above, while derivatives sit in the dense store: the properties of a phase
    // each ask for them where the one before left them, and they are evaluated once.
    mutable bool precomputed_ = false;
    mutable Active precomputedBeta_, precomputedT_;
    // The last branch ends, per type (vapor, liquid), at the temperature beside them.
    mutable double endT_[2] = {0, 0}, end_[2] = {0, 0};
};

} // namespace Phase

#endif
