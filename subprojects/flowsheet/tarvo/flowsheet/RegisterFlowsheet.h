#ifndef TARVO_FLOWSHEET_REGISTERFLOWSHEET_H
#define TARVO_FLOWSHEET_REGISTERFLOWSHEET_H

// Enters the types that every flowsheet is built of in the node factory, once; later calls do nothing.
void registerFlowsheet();

#endif
