#ifndef TARVO_PHASES_EOSPCSAFT_H
#define TARVO_PHASES_EOSPCSAFT_H

#include <tarvo/phases/KwongRedlichSoave.h>
#include <tarvo/phases/PcsaftParameters.h>

#include <vector>

namespace Phase {

// The residual Helmholtz energy a_res / (R T) of the PC-SAFT equation in its non-associating form (Gross
// and Sadowski, Ind. Eng. Chem. Res. 40 (2001) 1244): hard chains and dispersion, with the parameters of
// PcsaftParameters. T in K, rho in mol/m3, x the molar fractions of the components in list order. S is
// double, Active, or a number with a directional derivative over either.
template <typename S> S pcsaftResidualHelmholtz(const S& T, const S& rho, const std::vector<S>& x);

// PC-SAFT in the frame of the cubic equations: the density unknown beta is the packing fraction eta,
// which lies below 0.74 for any fluid; the critical one is the estimate of betac.
class EosPcsaft : public PcsaftParameters, public EosCubic::KwongRedlichSoave {
public:
    // Components without parameters count as absent here: a stream's phases hold a start composition
    // before the feed reaches them. requireParameters throws for one that is present.
    void precompute(const Value& T, const Vector& x) const override;
    void requireParameters(const Vector& x) const;
    // 1e-5 for a vapor, 0.5 for any other type.
    void estimate(const Value& P, const Value& T, const Vector& x, PhaseType type) override;
    Value betac(const Vector& x) const override;
    Value pressure(const Value& reduced, const Value& T) const override;
    Value dpdbeta(const Value& reduced, const Value& T) const override;
    Value density(const Value& reduced) const override;
    void preparefugacity_eos(const Value& P, const Value& T, std::vector<Value>& lnphi) const override;

    // At the stored beta and the last precompute, per kmol: the departures of enthalpy and entropy from
    // the ideal gas at (T, P), and of the heat capacity at constant P (from differences, without the
    // derivatives of the state). They hide the cubic equation's; P is the state's, which beta holds.
    Value enthalpyDeparture(const Value& P, const Value& T) const;
    Value entropyDeparture(const Value& P, const Value& T) const;
    Value heatCapacityDeparture(const Value& T) const;

protected:
    // Only the frame is the cubic's.
    bool ownCubic() const override { return false; }

private:
    // a_res / (R T) at the stored composition, with its derivative along (dT, drho, dx_i of component i,
    // or none for i < 0); rho in mol/m3.
    std::pair<Active, Active> helmholtz_(const Active& T, const Active& rho, double dT, double drho, int i) const;
    // In plain numbers: the residual enthalpy over R and the pressure at (T, rho).
    double enthalpyOverR_(double T, double rho) const;
    double pressure_(double T, double rho) const;

    // The normalised composition and sum x_i m_i d_i^3 (cubic angstrom) of the last precompute.
    mutable std::vector<Value> x_;
    mutable Value chainVolume_;
};

} // namespace Phase

#endif
