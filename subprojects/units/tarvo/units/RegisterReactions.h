#ifndef TARVO_UNITS_REGISTERREACTIONS_H
#define TARVO_UNITS_REGISTERREACTIONS_H

// Enters the reaction types in the node factory, once; later calls do nothing. A reaction of fixed
// stoichiometry finds its species in the component list when it is made.
void registerReactions();

#endif
