#include <tarvo/units/ElectricalConsumption.h>
#include <tarvo/utility/Log.h>

#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

ElectricalConsumption::ElectricalConsumption(const Defaults& defaults, uint32_t id, Persistency* persistency,
                                             Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root) {
    for (Quantity* q : {&cosphi, &We, &V, &I})
        addVariable(*q);
    We.setOutput();
    I.setOutput();
}

void ElectricalConsumption::calculateElectricalConsumption(int level) {
    I = We / (V * cosphi * std::sqrt(3.0));
    TARVO_LOG_AT(verbosityFile + level, 3) << "Current drawn " << I.toDouble() << " A";
}
