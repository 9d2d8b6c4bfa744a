#ifndef TARVO_PHASES_PHASEPCSAFT_H
#define TARVO_PHASES_PHASEPCSAFT_H

#include <tarvo/phases/EosPcsaft.h>
#include <tarvo/phases/PhaseEos.h>

namespace Phase {

// A fluid phase on PC-SAFT: the ideal gas of Phase::Ideal plus the equation's residual part at the stored
// packing fraction. Making one sets the process-wide parameters for the component list by the
// components' names, from the non-associating parameters of Gross and Sadowski (2001): water, methanol,
// ethanol and ammonia, which associate, have none, and a phase that holds one of them is an error.
class Pcsaft : public Eos<EosPcsaft> {
public:
    Pcsaft();
};

// Sets PcsaftParameters for the present component list, by name; throws for more than NC components.
void setPcsaftParametersOfComponents();

} // namespace Phase

#endif
