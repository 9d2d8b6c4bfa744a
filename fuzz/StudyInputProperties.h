#ifndef TARVO_FUZZ_STUDYINPUTPROPERTIES_H
#define TARVO_FUZZ_STUDYINPUTPROPERTIES_H

#include "FuzzFailure.h"

#include <tarvo/core/HomotopyInput.h>
#include <tarvo/core/Sensitivity.h>
#include <tarvo/core/SensitivityInput.h>

#include <json/json.h>

#include <cmath>
#include <memory>
#include <sstream>
#include <string>

// What a study input that a reader accepted must hold, whatever its format: numbers that the runs can
// step through, a grid that the ordering can hold, and a JSON form that reads back with the same texts.
inline void checkAccepted(const SensitivityInput& input) {
    long long product = 1;
    for (const ControlledVariable& v : input.controlled) {
        if (v.points < 1 || v.points > 999) fuzzFailure("accepted points " + std::to_string(v.points));
        if (!std::isfinite(v.start) || !std::isfinite(v.end)) fuzzFailure("accepted a bound that is no number");
        product *= v.points;
        if (product > SensitivityInput::maximumRounds) fuzzFailure("accepted a grid of more than the maximum");
    }
    if (!std::isfinite(input.timeout)) fuzzFailure("accepted a timeout that is no number");
    // Small grids only: the walk of a large one is made at construction and would only slow the search.
    if (input.defined() && product <= 1000) {
        const Sensitivity sensitivity(input, "SensitivityResults.xml");
        if (sensitivity.maxRound() != product) fuzzFailure("a grid of " + std::to_string(product) + " points has " +
                                                           std::to_string(sensitivity.maxRound()) + " rounds");
    }
    std::ostringstream written;
    input.printJson(written);
    Json::Value back;
    Json::CharReaderBuilder builder;
    std::string errors;
    std::istringstream in(written.str());
    if (!Json::parseFromStream(builder, in, &back, &errors)) fuzzFailure("printJson is no JSON: " + written.str());
    if (back["name"].asString() != input.name || back["type"].asString() != input.type ||
        back["controlled"].size() != input.controlled.size() || back["monitored"].size() != input.monitored.size())
        fuzzFailure("printJson reads back as another input: " + written.str());
}

inline void checkAccepted(const HomotopyInput& input) {
    for (const HomotopyVariable& v : input.controlled)
        if (!std::isfinite(v.start) || !std::isfinite(v.end)) fuzzFailure("accepted a bound that is no number");
}

#endif
