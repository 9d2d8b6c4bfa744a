#include <tarvo/core/HomotopyInputJson.h>
#include <tarvo/core/JsonInput.h>

using Tarvo::Core::JsonInput;

HomotopyInputJson::HomotopyInputJson(const std::string& text) {
    const JsonInput in("homotopy input", text);
    const Json::Value& root = in.root();
    in.checkKeys(root, {"type", "id", "points", "controlled"}, {"type", "id", "points", "controlled"}, "the input");
    type = in.text(root, "type", "the input");
    id = in.integer(root, "id", "the input");
    points = in.integer(root, "points", "the input");
    for (const Json::Value& v : in.objects(root, "controlled")) {
        const std::string where = "a controlled variable";
        in.checkKeys(v, {"variable", "start", "end"}, {"variable", "start", "end"}, where);
        controlled.push_back({in.text(v, "variable", where), in.number(v, "start", where), in.number(v, "end", where)});
    }
}
