#ifndef TARVO_CORE_HOMOTOPYINPUTJSON_H
#define TARVO_CORE_HOMOTOPYINPUTJSON_H

#include <tarvo/core/HomotopyInput.h>

#include <string>

// A homotopy input read from a JSON text: one object with "type", "id", "points" and the array
// "controlled" of "variable", "start", "end". Unknown keys, missing ones and values of the wrong kind are
// refused with "Failed to parse homotopy input: " and the reason.
class HomotopyInputJson : public HomotopyInput {
public:
    explicit HomotopyInputJson(const std::string& text);
};

#endif
