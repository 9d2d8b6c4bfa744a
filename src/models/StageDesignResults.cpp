#include <tarvo/components/ListComponents.h>
#include <tarvo/models/StageDesignResults.h>

void markStageDesignAsResults(Object& module, const std::string& stage, const std::vector<std::string>& tags) {
    std::vector<std::string> design;
    for (const std::string& tag : tags) design.push_back(stage + "." + tag);
    for (int c = 0; c < NCOMPONENTS; ++c) design.push_back(stage + ".permeance[" + std::to_string(c) + "]");
    for (const std::string& path : design) {
        Value& q = module.Q(path);
        q.unsetInput();
        q.setOutput();
    }
}
