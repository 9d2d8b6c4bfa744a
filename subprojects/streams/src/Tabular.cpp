#include <tarvo/streams/Tabular.h>

Tabular::Tabular(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                 Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root) {
    // 1: no separation until the user says otherwise.
    addComponentVariables(kVL, "kVL", "Component volatility", "", 1.0);
}
