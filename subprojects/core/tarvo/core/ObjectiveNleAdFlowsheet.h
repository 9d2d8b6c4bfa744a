#ifndef TARVO_CORE_OBJECTIVENLEADFLOWSHEET_H
#define TARVO_CORE_OBJECTIVENLEADFLOWSHEET_H

#include <tarvo/core/ObjectiveNleAdVertex.h>

#include <string>
#include <utility>

// The objective half of a flowsheet: a vertex whose unknowns and residuals are gathered from its
// units and streams. It adds no state of its own.
class ObjectiveNleAdFlowsheet : public ObjectiveNleAdVertex {
public:
    explicit ObjectiveNleAdFlowsheet(std::string name) : ObjectiveNleAdVertex(std::move(name)) {}
};

#endif
