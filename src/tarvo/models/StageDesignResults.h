#ifndef TARVO_MODELS_STAGEDESIGNRESULTS_H
#define TARVO_MODELS_STAGEDESIGNRESULTS_H

#include <tarvo/persistency/Object.h>

#include <string>
#include <vector>

// A staged membrane gives each stage its share of the design (area, pressures, permeances): in the stage
// those values are results of the staged module, not inputs of its own. `stage` is the stage's tag,
// `tags` its design quantities besides the permeances.
void markStageDesignAsResults(Object& module, const std::string& stage, const std::vector<std::string>& tags);

#endif
