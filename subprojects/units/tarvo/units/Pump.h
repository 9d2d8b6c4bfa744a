#ifndef TARVO_UNITS_PUMP_H
#define TARVO_UNITS_PUMP_H

#include <tarvo/units/ElectricalConsumption.h>
#include <tarvo/units/FlashDrum.h>

// Raises the pressure of a liquid: a flash drum without duty ("PH" unless another option is given) whose
// fluid power is the volume flow, at the outlet's density, times the rise of pressure. The power is the
// machine's bill and is not added to the fluid's enthalpy.
class Pump : public ElectricalConsumption, public FlashDrum {
public:
    Pump(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
         Persistent* parent, Persistent* root);

    void go(SolutionMode mode, int level) override;

    Quantity etaM{"etaM", "Mechanical efficiency", "", this, 0.9};
    Quantity etaE{"etaE", "Electrical efficiency", "", this, 0.9};
    Quantity rho{"rho", "Fluid density", "kg/m3", this, 1000.0};
    Quantity Wf{"Wf", "Fluid power", "W", this, 0.0};
    Quantity Wm{"Wm", "Shaft power", "W", this, 0.0};
    Quantity cr{"cr", "Compression ratio", "", this, 1.0};
};

#endif
