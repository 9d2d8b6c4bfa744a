#ifndef TARVO_UNITS_FLASHDRUM_H
#define TARVO_UNITS_FLASHDRUM_H

#include <tarvo/units/Connectivity.h>
#include <tarvo/units/FlashDrumBase.h>

#include <string>
#include <vector>

// A flash drum with any number of inlets and one outlet: the mixed inlets react and reach equilibrium in the
// outlet, by the specifications of FlashDrumBase.
class FlashDrum : public Connectivity, public FlashDrumBase {
public:
    FlashDrum(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
              Persistent* parent, Persistent* root);

    void go(SolutionMode mode, int level) override;
    void setup_of() override;
    // One pass of the unit on its inlets as they stand, as a simultaneous solve of a flowsheet evaluates it.
    int calculateResidualsLocal() override;
    ObjectiveNleAd* objective() override { return this; }
    // The enthalpy that the drum takes out of what flows through it.
    Value energyBalance() const override { return duty; }

    Quantity Tavg{"Tavg", "Mass-weighted average inlet temperature", "K", this, 298.15};

protected:
    Stream* calculatedStream_() override;
    // Hands the calculated stream on to the outlets; here it is the outlet itself.
    virtual void passOn_(SolutionMode /*mode*/, int /*level*/) {}
    virtual std::string emptyInletMessage_() const { return "Empty inlet stream"; }

private:
    std::vector<EdgeBase*> feeds_; // the connected inlets
};

#endif
