#ifndef TARVO_MODELS_ICE_H
#define TARVO_MODELS_ICE_H

#include <tarvo/units/FlashDrum.h>

// An internal combustion engine: a flash drum that burns the methane of its feeds completely at 353.15 K and
// 1 atm. The heat set free is the thermal power input; a share eta of it becomes electric power.
class ICE : public FlashDrum {
public:
    ICE(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
        Persistent* parent, Persistent* root);

    void setup() override;
    void go(SolutionMode mode, int level) override;

    Quantity eta{"eta", "Electric yield", "", this, 0.0};
    Quantity We{"We", "Net electric power generated", "W", this, 0.0};
    Quantity Wt{"Wt", "Actual thermal power input", "W", this, 0.0};
};

// The feeds of the engine of the biogas plants into `plant`: the clean biogas BiogasClean at `pressure` and
// 313.15 K, the air AirToICE, and the engine's electric yield.
void setEngineFeeds(Model& plant, const Value& pressure);

#endif
