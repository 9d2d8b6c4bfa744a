#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/units/Divider.h>
#include <tarvo/units/Mixer.h>
#include <tarvo/units/Multiplier.h>
#include <tarvo/units/RegisterUnits.h>
#include <tarvo/units/Selector.h>
#include <tarvo/units/Separator.h>
#include <tarvo/units/Splitter.h>

#include <climits>

using Tarvo::Persistency::Defaults;
using Tarvo::Persistency::IntegerOption;

namespace {
constexpr double iconSize = 40;

template <typename C>
void unit(const std::string& name, const std::string& description,
          const std::vector<IntegerOption>& options = {}) {
    NodeFactory::registerType<C>(name, description, "unit", false, options, {}, {}, "", iconSize, iconSize);
}
} // namespace

void registerUnits() {
    if (NodeFactory::registered("Mixer")) return;
    unit<Divider>("Divider", "Cuts a stream into like parts",
                  {{"nOutlets", "Number of streams connected at outlet", 2, 1, INT_MAX}});
    unit<Mixer>("Mixer", "Joins streams");
    unit<Separator>("Separator", "Divides each component by its own split fraction",
                    {{"nOutlets", "The number of outlets", 2, 1, INT_MAX}});
    NodeFactory::registerAlias("Separator", "Separator<2>", "Divides each component between two outlets",
                               Defaults().setInteger("nOutlets", 2), "", iconSize, iconSize);
    NodeFactory::registerAlias("Separator", "Separator<3>", "Divides each component among three outlets",
                               Defaults().setInteger("nOutlets", 3), "", iconSize, iconSize);
    unit<Splitter>("Splitter", "Separates a stream by phase");
    unit<Multiplier>("Multiplier", "Copies a stream");
    unit<Selector>("Selector", "Passes on one of several streams");
}
