#ifndef TARVO_PHASES_EOSGERG2004_H
#define TARVO_PHASES_EOSGERG2004_H

#include <tarvo/phases/Gerg2004Mixture.h>
#include <tarvo/phases/KwongRedlichSoave.h>

#include <vector>

namespace Phase {

// The properties of a state of the GERG-2004 equation with its own ideal-gas part, per kmol.
struct Gerg2004State {
    Value P, Z, dPdrho, d2Pdrho2, dPdT, cv, cp, w, JT;
};

// The GERG-2004 equation (Kunz, Klimeck, Wagner and Jaeschke, GERG Technical Monograph 15, 2007) in the
// frame of the cubic equations, which gives the density unknown, its start and the pressure that pushes a
// phase back to its side of the critical density. The unknown beta is rho / (4 rho_r(x)), so that the
// reduced density delta is 4 beta, the critical point lies near beta = 1/4, and the densest liquids of
// the equation's range (some 3 rho_r) stay below 1.
//
// The components of the list map to those of the equation by name: its names in the data ("methane",
// "n-butane"), its formulas ("CH4", "H2O") and the catalogue's entries ("butane", "nhexane"). The data
// holds the 21 components of the 2008 extension, which keeps the form and numbers of the 18 of 2004 and
// adds n-nonane, n-decane and hydrogen sulfide: all 21 are taken. A component outside them counts as
// absent here, since a stream's phases hold a start composition before the feed reaches them;
// requireParameters throws for one that is present.
//
// The sums of the terms run in plain numbers at the (delta, tau) of the state, once per state and
// composition; the results take the derivatives of T, beta and x that the state carries by their
// partial derivatives, to first order, which is what the Value arithmetic carries.
class EosGerg2004 : public EosCubic::KwongRedlichSoave {
public:
    EosGerg2004();

    // The normalised composition of the components of the equation that x holds, and the reducing
    // functions there; a phase that carries nothing takes the equimolar mixture of all of them.
    void precompute(const Value& T, const Vector& x) const override;
    void requireParameters(const Vector& x) const;
    Value betac(const Vector& x) const override;
    Value pressure(const Value& reduced, const Value& T) const override;
    Value dpdbeta(const Value& reduced, const Value& T) const override;
    Value density(const Value& reduced) const override;
    // The reducing temperature T_r(x).
    Value pseudoCriticalTemperature(const Vector& x) const override;
    // Components outside the equation, or absent from x, get 0.
    void preparefugacity_eos(const Value& P, const Value& T, std::vector<Value>& lnphi) const override;

    // At the stored beta and the last precompute, per kmol: the departures of enthalpy and entropy from
    // the ideal gas at (T, P), and of the heat capacity at constant P. They hide the cubic equation's; the
    // pressure in them is the state's, which beta holds.
    Value enthalpyDeparture(const Value& P, const Value& T) const;
    Value entropyDeparture(const Value& P, const Value& T) const;
    Value heatCapacityDeparture(const Value& T) const;

    // The state at (T, rho) and composition x in the standard's own terms: its ideal-gas part and molar
    // masses, where the phase takes the kernel's.
    Gerg2004State properties(const Value& T, const Value& rho, const Vector& x) const;

    // The sums of the terms at (delta, tau) for the normalised composition x of the last precompute: the
    // reduced derivatives of alphar up to the second order, with the derivatives that delta, tau and x carry.
    // The reducing functions come from precompute, since tau is made of them.
    void Qinit(const Active& delta, const Active& tau, const Vector& x) const;

protected:
    // Only the frame is the cubic's.
    bool ownCubic() const override { return false; }

private:
    // A function of (delta, tau, x) from its value and partial derivatives at the point of the last Qinit.
    Active lift_(double value, double dDelta, double dTau, const double* dx) const;
    // Qinit at reduced and T.
    void evaluate_(const Value& reduced, const Value& T) const;

    std::vector<int> standardIndex_;     // of each listed component; -1 outside the equation
    mutable std::vector<int> place_;     // of each listed component in the mixture; -1 if absent
    mutable Gerg2004Mixture mixture_;
    mutable std::vector<Value> x_;       // the normalised composition, by place in the mixture
    mutable std::vector<double> plainX_; // its numbers
    // 1 / rho_r and T_r, and their numbers and partial derivatives in each x_k.
    mutable Value volume_, temperature_;
    mutable double volume0_ = 0, temperature0_ = 0;
    mutable std::vector<double> dvolume_, dtemperature_;
    // A point of Qinit: (delta, tau), the sums there and their partial derivatives in each x_k.
    struct Point {
        bool valid = false;
        double delta = 0, tau = 0;
        Gerg2004Mixture::Reduced sums;
        std::vector<Gerg2004Mixture::Reduced> partials;
    };
    // The last two points, the present one first: the frame asks for the pressure at beta and at betac in
    // turn, at one T and x.
    const Point& point_() const { return points_[current_]; }
    void forgetPoints_() const;

    mutable Point points_[2];
    mutable int current_ = 0;
    mutable std::vector<double> column_;
    mutable Active deltaStep_, tauStep_;
    mutable std::vector<Active> xSteps_;
    mutable Active alpha_[6];
};

} // namespace Phase

#endif
