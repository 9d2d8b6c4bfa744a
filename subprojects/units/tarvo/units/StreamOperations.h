#ifndef TARVO_UNITS_STREAMOPERATIONS_H
#define TARVO_UNITS_STREAMOPERATIONS_H

#include <tarvo/core/Calculatable.h>
#include <tarvo/utility/SmartEnumerator.h>

class Flash;
class Stream;

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

#endif
