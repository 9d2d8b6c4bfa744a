#include <tarvo/components/ListComponents.h>
#include <tarvo/models/Inputs.h>

#include <algorithm>

void setInput(Value& q, const Value& value) {
    q = value;
    q.setInput();
}

void setFeed(Model& sheet, const std::string& stream, const Value& P, const Value& T, const std::string& flowoption,
             const Value& flow, const std::vector<std::pair<std::string, double>>& x) {
    setInput(sheet.Q(stream + ".P"), P);
    setInput(sheet.Q(stream + ".T"), T);
    sheet.S(stream + ".flowoption") = flowoption;
    setInput(sheet.Q(stream + (flowoption == "Mx" ? ":Tphase.mdot" : ":Tphase.ndot")), flow);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const auto given = std::find_if(x.begin(), x.end(), [i](const auto& c) { return c.first == components[i]->name; });
        setInput(sheet.Q(stream + ":Tphase.x", i), Value(given == x.end() ? 0.0 : given->second));
    }
}
