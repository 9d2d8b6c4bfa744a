#include <tarvo/components/ListComponents.h>
#include <tarvo/models/HeatingValue.h>

#include <utility>
#include <vector>

namespace {
// The fuels of the biogas plants and their lower heating values, by name: the list of components may be
// loaded again between two uses.
const std::vector<std::pair<std::string, Value>>& fuels() {
    static const std::vector<std::pair<std::string, Value>> table{{"CH4", Value(802310.0, "kJ/kmol")}};
    return table;
}
} // namespace

Value lowerHeatingValueFlow(Model& sheet, const std::string& stream) {
    Value flow(0.0, "W");
    for (const auto& [fuel, lhv] : fuels())
        flow += lhv * sheet.Q(stream + ":Tphase.ndotcomps", components.lookup(fuel));
    return flow;
}
