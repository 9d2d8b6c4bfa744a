#ifndef TARVO_PHASES_REGISTERPHASES_H
#define TARVO_PHASES_REGISTERPHASES_H

// Enters the phase types of this build in the node factory, once; later calls do nothing.
void registerPhases();

#endif
