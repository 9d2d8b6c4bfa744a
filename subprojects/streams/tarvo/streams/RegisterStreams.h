#ifndef TARVO_STREAMS_REGISTERSTREAMS_H
#define TARVO_STREAMS_REGISTERSTREAMS_H

// Enters the stream types of this build in the node factory, once; later calls do nothing. The phases
// must be registered first.
void registerStreams();

#endif
