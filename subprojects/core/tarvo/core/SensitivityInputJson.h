#ifndef TARVO_CORE_SENSITIVITYINPUTJSON_H
#define TARVO_CORE_SENSITIVITYINPUTJSON_H

#include <tarvo/core/SensitivityInput.h>

#include <string>

// A sensitivity input read from a JSON text: one object with "name" (optional), "type", "id", "order",
// "timeout", "startingRound" and the arrays "controlled" (of "variable", "label", "unit", "start", "end",
// "points") and "monitored" (of "variable", "label", "unit"). Unknown keys, missing ones and values of the
// wrong kind are refused with "Failed to parse sensitivity input: " and the reason.
class SensitivityInputJson : public SensitivityInput {
public:
    explicit SensitivityInputJson(const std::string& text);
};

#endif
