#ifndef TARVO_UNITS_ELECTRICALCONSUMPTION_H
#define TARVO_UNITS_ELECTRICALCONSUMPTION_H

#include <tarvo/core/Model.h>

// The electrical side of a machine: its power We drawn from, or returned to, a three-phase line of voltage V
// and power factor cosphi, and the current I that this takes. The machine sets We; the current follows.
class ElectricalConsumption : public virtual Model {
public:
    ElectricalConsumption(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                          Persistent* parent, Persistent* root);
    virtual ~ElectricalConsumption() = default;

    Quantity cosphi{"cosphi", "cosine of phi", "", this, 0.9};
    Quantity We{"We", "Electrical power", "W", this, 1.0};
    Quantity V{"V", "Voltage", "V", this, 380.0};
    Quantity I{"I", "Current", "A", this, 0.0};

protected:
    // I from We, V and cosphi. The level is that of the calling unit's log.
    void calculateElectricalConsumption(int level);
};

#endif
