#include <tarvo/flowsheet/CompressionStage.h>
#include <tarvo/flowsheet/MultiCompressorIntercooled.h>
#include <tarvo/flowsheet/RegisterFlowsheet.h>
#include <tarvo/flowsheet/Terminator.h>
#include <tarvo/persistency/NodeFactory.h>

using Tarvo::Persistency::StringOption;

namespace {
constexpr double iconSize = 40;

template <int N> void compressionTrain(const std::string& description) {
    const std::vector<StringOption> stages{
        {"typeT", "the type of the model which sits on the Vertexes", "CompressionStage", ""},
        {"typeU", "the type of the model which sits on the main Edges", "StreamVapor", ""},
        {"typeV", "the type of the model which sits on the crossflow Edges", "StreamLiquid", ""}};
    NodeFactory::registerType<MultiCompressorIntercooled<N>>("MultiCompressorIntercooled" + std::to_string(N),
                                                             description, "flowsheet", false, {}, stages, {},
                                                             "", iconSize, iconSize);
}
} // namespace

void registerFlowsheet() {
    if (NodeFactory::registered("Terminator")) return;
    NodeFactory::registerType<Terminator>("Terminator", "Source or sink of the streams of a flowsheet",
                                          "unit", false, {}, {}, {}, "", 40, 40);
    NodeFactory::registerType<CompressionStage>("CompressionStage",
                                                "Compression stage with intercooler and condensate knock-out",
                                                "flowsheet", false, {}, {}, {}, "", iconSize, iconSize);
    compressionTrain<1>("Compressor with intercooler and condensate knock-out");
    compressionTrain<2>("Two-stage intercooled compressor");
    compressionTrain<3>("Three-stage intercooled compressor");
}
