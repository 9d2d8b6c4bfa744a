#ifndef TARVO_FLOWSHEET_REGISTERFLOWSHEET_H
#define TARVO_FLOWSHEET_REGISTERFLOWSHEET_H

// Enters the types that every flowsheet is built of, and the assemblies, in the node factory, once; later
// calls do nothing.
void registerFlowsheet();

#endif
