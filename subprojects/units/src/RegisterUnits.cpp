#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/units/Compressor.h>
#include <tarvo/units/Degasser.h>
#include <tarvo/units/Divider.h>
#include <tarvo/units/Exchanger.h>
#include <tarvo/units/FlashDegasser.h>
#include <tarvo/units/FlashDrum.h>
#include <tarvo/units/FlashSplitter.h>
#include <tarvo/units/Mixer.h>
#include <tarvo/units/MultiExchanger.h>
#include <tarvo/units/Multiplier.h>
#include <tarvo/units/Pump.h>
#include <tarvo/units/RegisterUnits.h>
#include <tarvo/units/Selector.h>
#include <tarvo/units/Separator.h>
#include <tarvo/units/Splitter.h>

#include <climits>

using Tarvo::Persistency::Defaults;
using Tarvo::Persistency::IntegerOption;
using Tarvo::Persistency::StringOption;

namespace {
constexpr double iconSize = 40;

template <typename C>
void unit(const std::string& name, const std::string& description,
          const std::vector<IntegerOption>& options = {}, const std::vector<StringOption>& strings = {}) {
    NodeFactory::registerType<C>(name, description, "unit", false, options, strings, {}, "", iconSize,
                                 iconSize);
}

const std::vector<IntegerOption> drumIntegers{{"nReactions", "Number of reactions", 0, -1, INT_MAX}};

std::vector<StringOption> drumStrings(const std::string& innerStream = "", const std::string& option = "PT") {
    std::vector<StringOption> options{{"option", "Flash configuration option", option, ""},
                                      {"reactionMode", "Reaction processing mode", "series", ""}};
    if (!innerStream.empty())
        options.push_back({"embeddedTypeStream", "Type of the internal mixed stream", innerStream, ""});
    return options;
}

// A flash unit whose inner stream is of the type in its name.
void withInnerStream(const std::string& base, const std::string& stream, const std::string& description) {
    NodeFactory::registerAlias(base, base + "<" + stream + ">", description,
                               Defaults().setString("embeddedTypeStream", stream), "", iconSize, iconSize);
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
    unit<FlashDrum>("FlashDrum", "Flash drum with optional reactions", drumIntegers, drumStrings());
    unit<Degasser>("Degasser", "Separates the vapor phase of a stream from its condensed phases");
    unit<Splitter>("Splitter", "Separates a stream by phase");
    unit<FlashSplitter>("FlashSplitter", "Flash drum with one outlet for each phase", drumIntegers,
                        drumStrings("StreamIdealLiquidVapor"));
    withInnerStream("FlashSplitter", "StreamIdealLiquidSolid",
                    "Flash drum with one outlet for each phase, ideal liquid and solid phases");
    withInnerStream("FlashSplitter", "StreamIdealLiquidSolidVapor",
                    "Flash drum with one outlet for each phase, ideal vapor, liquid and solid phases");
    unit<FlashDegasser>("FlashDegasser", "Flash drum with a vapor and a condensate outlet", drumIntegers,
                        drumStrings("StreamVapor"));
    withInnerStream("FlashDegasser", "StreamIdealLiquidVapor",
                    "Flash drum with a vapor and a condensate outlet, ideal vapor and liquid phases");
    withInnerStream("FlashDegasser", "StreamIdealSolidVapor",
                    "Flash drum with a vapor and a condensate outlet, ideal vapor and solid phases");
    withInnerStream("FlashDegasser", "StreamIdealLiquidSolidVapor",
                    "Flash drum with a vapor and a condensate outlet, ideal vapor, liquid and solid phases");
    withInnerStream("FlashDegasser", "StreamKwongRedlichSoaveLiquidVapor",
                    "Flash drum with a vapor and a condensate outlet, Kwong-Redlich-Soave vapor and liquid phases");
    withInnerStream("FlashDegasser", "StreamKwongRedlichSoaveLiquidSolidVapor",
                    "Flash drum with a vapor and a condensate outlet, Kwong-Redlich-Soave vapor and liquid phases "
                    "and an ideal solid phase");
    for (const std::string model : {"Nrtl1", "Nrtl2"}) {
        withInnerStream("FlashDegasser", "Stream" + model + "LiquidVapor",
                        "Flash drum with a vapor and a condensate outlet, ideal vapor and " + model + " liquid phases");
        withInnerStream("FlashDegasser", "Stream" + model + "LiquidSolidVapor",
                        "Flash drum with a vapor and a condensate outlet, ideal vapor, " + model +
                            " liquid and ideal solid phases");
    }
    withInnerStream("FlashDegasser", "StreamUnifacLiquidVapor",
                    "Flash drum with a vapor and a condensate outlet, ideal vapor and UNIFAC liquid phases");
    unit<Multiplier>("Multiplier", "Copies a stream");
    unit<Exchanger>("Exchanger", "Heat exchanger between a hot and a cold stream", drumIntegers,
                    {{"option", "Calculation mode", "UA", ""}});
    unit<Compressor>("Compressor", "Compressor or expander with isentropic yield", {},
                     {{"option", "Pressure option: {PD}", "P", ""}});
    unit<MultiExchanger>("MultiExchanger", "Couples of streams that exchange heat through a common solid",
                         {{"nStreams", "Number of stream couples connected", 2, 1, INT_MAX},
                          {"nReactions", "Number of reactions", 0, -1, INT_MAX},
                          {"nmultiReactions", "Number of multistream reactions", 0, -1, INT_MAX}},
                         {{"option", "Calculation mode", "UA", ""}});
    unit<Pump>("Pump", "Liquid pump", drumIntegers, drumStrings("", "PH"));
    unit<Selector>("Selector", "Passes on one of several streams");
}
