#ifndef TARVO_PHASES_EOSINTERFACE_H
#define TARVO_PHASES_EOSINTERFACE_H

#include <tarvo/phases/StateNumbers.h>
#include <tarvo/utility/Diagnostic.h>
#include <tarvo/utility/SmartEnumerator.h>
#include <tarvo/value/Value.h>

#include <limits>
#include <vector>

namespace Phase {

// An equation of state whose density is not found by solving it but is an unknown of the flash: a
// reduced density beta, dimensionless and of the order of 1 for a dense liquid, with the equation that
// the pressure at beta is the flash's pressure. There is no choice among roots: the phase's type and the
// start of beta decide which root the iteration reaches, and the pressure that the equation sees is bent
// where beta strays to the other side of the critical density, so that the iteration is pushed back.
class EosInterface : public virtual Diagnostic {
public:
    using PhaseType = Tarvo::Utility::PhaseType;

    // The mixture's parameters at (T, x), which the operations below read until the next call.
    virtual void precompute(const Value& T, const Vector& x) const = 0;
    // The start of beta at (P, T): the ideal gas for a vapor, a dense liquid otherwise.
    virtual void estimate(const Value& P, const Value& T, const Vector& x, PhaseType type) = 0;
    // The reduced density of the mixture's critical point.
    virtual Value betac(const Vector& x) const = 0;
    // After precompute: the pressure at the reduced density given, its slope in it, and the molar density.
    virtual Value pressure(const Value& reduced, const Value& T) const = 0;
    virtual Value dpdbeta(const Value& reduced, const Value& T) const = 0;
    virtual Value density(const Value& reduced) const = 0;
    // The pseudo-critical temperature of x: the molar mean of the critical temperatures.
    virtual Value pseudoCriticalTemperature(const Vector& x) const = 0;
    // The largest beta that settleDensity tries: betaHigh where beta is a fraction of the covolume.
    virtual double betaMax() const { return betaHigh; }

    // The pressure that the flash's residual sees at the stored beta, after precompute(T, x); a phase on
    // the wrong side of betac, or where the pressure falls with the density, gets one that pushes beta back.
    virtual void calculatePressureEos_(const Value& T, const Vector& x, PhaseType type, Value& P);
    // The residual of the density unknown at the flash's pressure, after precompute(T, x).
    virtual Value calculateResiduals(const Value& P, const Value& T, const Vector& x, PhaseType type);
    // beta at (P, T) from its estimate, by the iteration that the flash itself would make on this phase
    // alone: the start of a flash, whose searches need the phases' state at each of their points. beta
    // carries the derivatives that P, T and x carry, through one Newton correction in Values.
    void settleDensity(const Value& P, const Value& T, const Vector& x, PhaseType type);
    // The residual at beta = reduced in plain numbers, for the iteration of settleDensity. A model that keeps
    // no Values between its evaluations may drop the derivatives, which the iteration doesn't read.
    virtual double plainResidual(double reduced, const Value& P, const Value& T, const Vector& x, PhaseType type);

    // ln phi at (P, T) in Pa and K for x in plain numbers, on the root of the phase's type, where the
    // equation has it in closed form and settleDensity would settle there unbent; false otherwise.
    virtual bool lnPhiOfRoot(double /*P*/, double /*T*/, const std::vector<double>& /*x*/, PhaseType /*type*/,
                             std::vector<double>& /*lnphi*/) const {
        return false;
    }

    // The density unknown.
    Value beta{0.0};
    // Whether the last calculatePressureEos_ bent the pressure.
    bool corrected = false;
    // The limits of beta: no volume, and the covolume.
    static constexpr double betaHigh = 1.0;
    static constexpr double betaLow = 0.0;

protected:
    // dP/dbeta at beta in the last calculatePressureEos_ of this frame, or plainResidual, where it left the
    // pressure unbent, and NaN otherwise: the slope of the residual for settleDensity, without a second
    // evaluation.
    double unbentSlope_ = std::numeric_limits<double>::quiet_NaN();

private:
    // The state of the last settleDensity and the root it found there, with the slope of the residual.
    struct Settled {
        double P = 0;
        StateNumbers state;
        PhaseType type = PhaseType::vapor;
        double root = 0, slope = 0;
        // Whether root is one: Newton's method or the search past a hump found it.
        bool found = false;
        bool at(const Value& P, const Value& T, const Vector& x, PhaseType type) const;
        // Whether root is one at (P, T) for the type, at whatever x.
        bool nearby(const Value& P, const Value& T, PhaseType type) const;
    };
    Settled settled_;
};

} // namespace Phase

#endif
