#ifndef TARVO_UNITS_REGISTERUNITS_H
#define TARVO_UNITS_REGISTERUNITS_H

// Enters the unit operations of this build in the node factory, once; later calls do nothing. The streams
// must be registered first.
void registerUnits();

#endif
