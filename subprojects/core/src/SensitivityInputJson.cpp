#include <tarvo/core/JsonInput.h>
#include <tarvo/core/SensitivityInputJson.h>

using Tarvo::Core::JsonInput;

SensitivityInputJson::SensitivityInputJson(const std::string& text) {
    const JsonInput in("sensitivity input", text);
    const Json::Value& root = in.root();
    in.checkKeys(root, {"name", "type", "id", "order", "timeout", "startingRound", "controlled", "monitored"},
                 {"type", "id", "order", "timeout", "startingRound", "controlled", "monitored"}, "the input");
    name = in.text(root, "name", "the input");
    type = in.text(root, "type", "the input");
    id = in.integer(root, "id", "the input");
    order = in.text(root, "order", "the input");
    timeout = in.number(root, "timeout", "the input");
    startingRound = in.integer(root, "startingRound", "the input");
    for (const Json::Value& v : in.objects(root, "controlled")) {
        const std::string where = "a controlled variable";
        in.checkKeys(v, {"variable", "label", "unit", "start", "end", "points"}, {"variable", "start", "end", "points"},
                     where);
        const int points = in.integer(v, "points", where);
        if (points < 1 || points > 999) in.refuse("points of a controlled variable is not from 1 to 999");
        controlled.emplace_back(in.text(v, "variable", where), in.text(v, "label", where), in.text(v, "unit", where),
                                in.number(v, "start", where), in.number(v, "end", where), points);
    }
    if (rounds() > maximumRounds) in.refuse("the grid of the controlled variables has more than 1000000 points");
    for (const Json::Value& v : in.objects(root, "monitored")) {
        const std::string where = "a monitored variable";
        in.checkKeys(v, {"variable", "label", "unit"}, {"variable"}, where);
        monitored.push_back({in.text(v, "variable", where), in.text(v, "label", where), in.text(v, "unit", where)});
    }
}
