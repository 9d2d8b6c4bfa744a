#ifndef TARVO_PHASES_PHASEGERG2004_H
#define TARVO_PHASES_PHASEGERG2004_H

#include <tarvo/phases/EosGerg2004.h>
#include <tarvo/phases/PhaseEos.h>

namespace Phase {

// A fluid phase on GERG-2004: the ideal gas of Phase::Ideal, with the kernel's reference states, plus the
// equation's residual part at the stored density.
class Gerg2004 : public Eos<EosGerg2004> {};

} // namespace Phase

#endif
