#ifndef TARVO_CORE_FLOWPATTERNS_H
#define TARVO_CORE_FLOWPATTERNS_H

#include <tarvo/core/FlowPattern.h>
#include <tarvo/persistency/ObjectFactory0.h>

#include <string>

// The flow patterns by name, as "FlowPatternUp<4,2>" or "FlowPatternSpiralRight66"; the caller owns what
// create() gives.
const ObjectFactory0<FlowPattern*(), std::string>& flowPatterns();

#endif
