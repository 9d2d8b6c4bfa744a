#ifndef TARVO_PHASES_PHASEIDEAL_H
#define TARVO_PHASES_PHASEIDEAL_H

#include <tarvo/components/RouteInterfaces.h>
#include <tarvo/phases/PhaseGenericInterface.h>
#include <tarvo/utility/Diagnostic.h>

#include <array>
#include <vector>

namespace Phase {

// The ideal model: sums of the pure components' properties of the phase's type, the ideal entropy of
// mixing, and Raoult's law for fugacities. Every other model derives from it and keeps these sums as
// its ideal part and its transport properties. Only components present (x > 0) enter a sum, so that no
// route is ever called for an absent one.
class Ideal : public GenericInterface, public virtual Diagnostic {
public:
    Ideal();

    void initialize(const Vector& x, const Value& rho, const Value& mw) override;
    void prepare(const Value& T, const Vector& x) override;
    void preparefugacity(const Value& P, const Value& T, const Vector& x, const Value& total) const override;
    const Value& calculate_P_(const Value& a, const Value& b, const Vector& x, const Value& total) const override;
    const Value& calculate_rho_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_H_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_S_(const Value& P, const Value& T, const Vector& x) const override;
    const Value& calculate_Cp_(const Value& P, const Value& T, const Vector& x) const override;
    // Its cache of pure components' points gives what their routes give at the same state.
    bool propertiesOfStateAlone() const override { return true; }
    const Value& fugacity(int i) const override { return lnphi_[i]; }
    Value mu_(const Value& T, const Value& P, const Vector& x) const override;
    Value kappa_(const Value& T, const Value& P, const Vector& x) const override;
    Value sigma_(const Value& T, const Value& P, const Vector& x) const override;
    void setType(Tarvo::Utility::PhaseType type) override { this->type = static_cast<int>(type); }

    Tarvo::Utility::PhaseType phaseType() const { return static_cast<Tarvo::Utility::PhaseType>(type); }

    int type = static_cast<int>(Tarvo::Utility::PhaseType::liquid);

protected:
    // The sums of the pure components' properties in the state given, whatever the phase's type: an
    // equation of state takes the ideal gas as its ideal part in both fluid types.
    const Value& sumH_(Tarvo::Utility::PhaseType state, const Value& P, const Value& T, const Vector& x) const;
    const Value& sumS_(Tarvo::Utility::PhaseType state, const Value& P, const Value& T, const Vector& x) const;
    const Value& sumCp_(Tarvo::Utility::PhaseType state, const Value& P, const Value& T, const Vector& x) const;

    mutable Value P_, rho_, H_, S_, Cp_, spare_;
    mutable std::vector<double> viscosities_;
    mutable std::vector<double> molecularWeights_;
    mutable std::vector<double> mixing_;
    mutable std::vector<Value> lnphi_;

private:
    // The pure-component viscosities and molecular weights of the present components, for the vapor rules.
    void fillVaporData_(const Value& T, const Value& P, const Vector& x) const;

public:
    // The kinds of a pure component's thermal property, in any state: those of a vapor's route.
    using PureProperty = RouteHeatVapor::Property;

private:
    // A pure component's property at the phase's temperature and pressure, with its partial derivatives.
    struct PurePoint {
        double value = 0, dT = 0, dP = 0;
        double lnx = 0; // ln x of the component, where a sum has the mixing term
        bool known = false;
    };
    // The points of one kind of property at the temperature, pressure and state they were worked out for. A
    // stream evaluates its phase several times at one state in a solve's step (its flash's residuals, its own
    // properties, a unit's results), with other derivatives but the same numbers.
    struct PurePoints {
        double T = 0, P = 0;
        Tarvo::Utility::PhaseType state = Tarvo::Utility::PhaseType::liquid;
        bool partials = false; // the points hold their slopes in T and P
        std::vector<PurePoint> points;
    };
    // The property of each component present in the state given, from the points of that kind.
    std::vector<PurePoint>& purePoints_(const Value& P, const Value& T, const Vector& x,
                                        Tarvo::Utility::PhaseType state, PureProperty kind) const;
    // The sum over the components present of x_i f_i of the property of the kind given, and of the mixing term
    // that entropy adds.
    Value mixtureSum_(const Value& P, const Value& T, const Vector& x, Tarvo::Utility::PhaseType state,
                      PureProperty kind) const;
    mutable std::array<std::array<PurePoints, 2>, 3> pure_; // by kind, the last two states
};

} // namespace Phase

#endif
