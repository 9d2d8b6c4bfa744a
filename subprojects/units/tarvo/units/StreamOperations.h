#ifndef TARVO_UNITS_STREAMOPERATIONS_H
#define TARVO_UNITS_STREAMOPERATIONS_H

#include <tarvo/core/Calculatable.h>
#include <tarvo/utility/SmartEnumerator.h>
#include <tarvo/value/Value.h>

#include <string>
#include <vector>

class Flash;
class Stream;
namespace Phase {
class Mass;
}

// What units and flowsheets do to the streams that they hand on.

// Copies the state of `from` (temperature, pressure and every phase) into `to`. The ends of the edge, its
// cut marks and its own messages stay: a whole assignment of the node would copy them as well.
void copyStream(Stream& to, const Stream& from);

// PH for a stream whose total has enthalpies, so that a copy or a mixture keeps its energy; PT otherwise.
Tarvo::Utility::FlashMode enthalpyFlashMode(const Stream& stream);

// The flash of the stream, a system of equations, with its unknowns registered for an enclosing system.
Flash& flashOf(Stream& stream);

// Sets the flash option of an outlet and calculates it: sequentially in modes 0 and 1, as part of the
// enclosing system otherwise.
void refreshOutlet(Stream& outlet, const Tarvo::Utility::FlashMode& mode, Calculatable::SolutionMode solution,
                   int level);

// The volume flow of the stream's total; without properties, that of its mass as water.
Value volumeFlow(const Stream& stream);

// mdot times h of the stream's total; the total must have properties.
Value totalEnthalpyFlow(Stream& stream);

// Gives the outlet's total the specific enthalpy that carries `enthalpyFlow`, where it has flow, and sets
// its flash mode to PH.
void setEnthalpyFlow(Stream& outlet, const Value& enthalpyFlow);

// Gives `out` the sum of `phases`, phases of `in`, at the temperature and pressure of `in`, and calculates
// it. Each phase of `out` takes the one of `phases` entered under its index, with its share of the flow; the
// others are emptied. Without phases, `out` is empty.
void passPhases(Stream& out, const Stream& in, const std::vector<const Phase::Mass*>& phases,
                Calculatable::SolutionMode solution, int level);

// Sends the vapor phase of `in` to `vapor` and the sum of its other phases, the condensed phase, to
// `condensate`. Returns the message for an inlet without a vapor phase, in which case nothing is sent, or an
// empty text.
std::string degas(const Stream& in, Stream& vapor, Stream& condensate, Calculatable::SolutionMode solution,
                  int level);

#endif
