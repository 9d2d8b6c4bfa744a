#ifndef TARVO_PHASES_EOSCUBICINTERFACE_H
#define TARVO_PHASES_EOSCUBICINTERFACE_H

#include <tarvo/phases/EosInterface.h>

#include <array>
#include <vector>

namespace Phase::EosCubic {

// The cubic equations of state in their shared form
//     P = R T / (v - b) - a / ((v + delta1 b) (v + delta2 b)),
// with a_c = Omega_a R^2 Tc^2 / Pc and b = Omega_b R Tc / Pc of each component, and the one-fluid mixing
// rules a = sum x_i x_j sqrt(a_i a_j), b = sum x_i b_i without binary interaction parameters. The
// departure functions and the fugacity coefficients are the closed integrals of this form.
//
// Compositions may not add up to one while a flash iterates: everything here is per kmol of the
// normalised composition.
class Interface : public EosInterface {
public:
    // The constants of an equation: Omega_a, Omega_b, the reduced density b / v of the critical point,
    // delta1 and delta2.
    Interface(double omegaA, double omegaB, double betaCritical, double delta1, double delta2);

    // The pressure at molar volume v and T, and its derivatives in v and T, for the last precompute.
    virtual Value eos(const Value& v, const Value& T) const;
    virtual Value deosdv(const Value& v, const Value& T) const;
    virtual Value deosdT(const Value& v, const Value& T) const;
    // The attractive parameter of component i at T, with its first and second derivatives in T.
    virtual Value a(int i, const Value& T, Value& dadT, Value& d2adT2) const;
    // Of component i: the attractive parameter at its critical point, and the covolume.
    Value ac(int i) const;
    Value b(int i) const;

    void precompute(const Value& T, const Vector& x) const override;
    // Throws for a present component that the equation has no constants for; the cubic equations take
    // every component's critical constants.
    void requireParameters(const Vector&) const {}
    void estimate(const Value& P, const Value& T, const Vector& x, PhaseType type) override;
    Value betac(const Vector& x) const override;
    Value pressure(const Value& reduced, const Value& T) const override;
    Value dpdbeta(const Value& reduced, const Value& T) const override;
    double plainResidual(double reduced, const Value& P, const Value& T, const Vector& x, PhaseType type) override;
    Value density(const Value& reduced) const override;
    Value pseudoCriticalTemperature(const Vector& x) const override;

    // At the stored beta and the last precompute: the logarithms of the fugacity coefficients of all
    // components, and the departures of enthalpy, entropy and heat capacity from the ideal gas at (T, P).
    virtual void preparefugacity_eos(const Value& P, const Value& T, std::vector<Value>& lnphi) const;
    bool lnPhiOfRoot(double P, double T, const std::vector<double>& x, PhaseType type,
                     std::vector<double>& lnphi) const override;
    Value enthalpyDeparture(const Value& P, const Value& T) const;
    Value entropyDeparture(const Value& P, const Value& T) const;
    Value heatCapacityDeparture(const Value& T) const;

    // The mixture of the last precompute: a with its first and second derivatives in T, and b.
    mutable Value Amix, dAmixdT, d2AmixdT2, Bmix;

    const double omegaA, omegaB, delta1, delta2;

protected:
    // What the mixture needs of a component, taken once from its constants: T is a number of the flash's
    // iterations, a component's constants are not.
    struct Constants {
        double Tc;      // K
        double rootAc;  // sqrt(a_c), in units of sqrt(Pa*m6/kmol2)
        double m;       // the function of the acentric factor, for the equations that have one
        double b;       // m3/kmol
        Value covolume; // b with its units
    };
    const Constants& constants(int i) const {
        if (constants_.empty()) takeConstants_();
        return constants_[i];
    }
    // Whether pressure and preparefugacity_eos are this frame's cubic, which plainResidual and lnPhiOfRoot
    // then take in closed form in numbers. An equation that only borrows the frame says no.
    virtual bool ownCubic() const { return true; }
    // m(omega) of the equations whose attraction has one, as a number.
    virtual double acentricFunction(double) const { return 0; }
    // Makes constants(i) take them anew from the components, as after a change of m.
    void forgetConstants() {
        constants_.clear();
        attractions_.clear();
        precomputed_.forget();
    }
    // sqrt(a_i) of component i at the temperature T in K, and its first three derivatives in T: the closed
    // form of each equation, in numbers, which precompute and a carry over to T's derivatives.
    virtual std::array<double, 4> rootAttraction(int i, double T) const = 0;

private:
    // The integral of 1 / ((v + delta1 b) (v + delta2 b)) from v to infinity.
    Value attraction_(const Value& v) const;
    // dP/dbeta at the reduced density given, in numbers for R T, a and b, where settleDensity leaves the
    // pressure there unbent: on the side of betac of the phase's type, rising with the density by at least a
    // fiftieth of the ideal gas's slope. NaN elsewhere.
    double unbentSlopeAt(double reduced, PhaseType type, double RT, double a, double b) const;

    // rootAttraction of every component at the temperature attractionT_: a flash asks for the same T many
    // times over while its compositions change.
    const std::vector<std::array<double, 4>>& attractionsAt_(double T) const;
    void takeConstants_() const;

    double betaCritical_;
    mutable std::vector<Constants> constants_;
    mutable std::vector<std::array<double, 4>> attractions_;
    mutable double attractionT_ = 0;
    // sqrt(a_i) of every component at the last precompute, in units of sqrt(Pa*m6/kmol2), which SI cannot
    // write: sum_j x_j a_ij = sqrt(a_i) sqrt(a).
    mutable std::vector<Value> rootA_;
    // The (T, x) of the last precompute: a flash asks for the mixture of the same state many times over,
    // in its start as in each evaluation of its residuals.
    mutable StateNumbers precomputed_;
};

} // namespace Phase::EosCubic

#endif
