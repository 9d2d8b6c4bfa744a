#ifndef TARVO_UNITS_REACTIONYIELD_H
#define TARVO_UNITS_REACTIONYIELD_H

#include <tarvo/units/Reaction.h>

// A reaction whose extent is given: by option "conv" the extent conv itself, by option "z" the fractional
// conversion z of the key component. The extent is limited so that no flow of the phase turns negative.
class ReactionYield : public Reaction {
public:
    ReactionYield(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root);

    // Checks the phase and the key, saves the inlet flows and works out the actual extent. A failed check is
    // reported and bypasses the reaction until the next precalc.
    void precalc() override;
    // Cuts the actual extent to what the inlet holds of each component that the reaction consumes.
    void bound() override;
    // Records the extent and the conversion of the key, and sets the phase's flows.
    void postcalc() override;
    // The starting fractional conversion of the key for the solver of the unit.
    Value estimate() const;
    // Sets conv from the starting conversion and the key's flow in the phase as it stands.
    void estimateExtent();
    // Multiplies the actual extent, as a unit does when reactions in parallel ask for more than is there,
    // and records it as postcalc would, leaving the phase alone.
    void scaleExtent(double factor);
    // Whether the last precalc passed its checks.
    bool active() const { return active_; }
    // Whether conv is the extent to apply as it stands, given or an unknown of the unit's solver.
    virtual bool extentGiven() const { return option.value() == "conv"; }
    // Whether conv is an unknown of the unit's solver, fixed by an equation of equilibrium.
    virtual bool isEquilibrium() const { return false; }

    String option{"option", "Calculation option", "z", this};

protected:
    // For a derived type whose option has another default.
    ReactionYield(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root, const std::string& defaultOption);

private:
    // The checks of precalc, each reported.
    bool ready_();
    // conv and z from the actual extent.
    void recordExtent_();

    bool active_ = false;
};

#endif
