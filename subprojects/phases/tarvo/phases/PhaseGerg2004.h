#ifndef TARVO_PHASES_PHASEGERG2004_H
#define TARVO_PHASES_PHASEGERG2004_H

#include <tarvo/phases/EosGerg2004.h>
#include <tarvo/phases/PhaseEos.h>

namespace Phase {

// A fluid phase on GERG-2004: the ideal gas of Phase::Ideal, with the kernel's reference states, plus the
// equation's residual part at the stored density. The phase template of the cubic equations joins the
// three parts, as for PC-SAFT: Phase::Ideal, the frame of Kwong-Redlich-Soave that EosGerg2004 derives
// from, and the equation's Helmholtz functions in place of the cubic's pressure and departures.
class Gerg2004 : public Eos<EosGerg2004> {};

} // namespace Phase

#endif
