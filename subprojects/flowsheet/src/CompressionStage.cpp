#include <tarvo/flowsheet/CompressionStage.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

CompressionStage::CompressionStage(const Defaults& defaults, uint32_t id, Persistency* persistency,
                                   Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root) {
    if (!persistency) {
        addUnit("Compressor", Defaults("C", "Compressor"));
        // The cooler and the knock-out drum are one unit: a flash at the cooler's temperature that parts the
        // vapor from the condensate.
        addUnit("FlashDegasser<StreamIdealLiquidVapor>", Defaults("COOL", "Intercooler"));
        addStream("StreamVapor", Defaults("S02", "Low pressure gas inlet"), "source", "out", "C", "in");
        // The compressed gas is hot and dry: no liquid forms before the cooler.
        addStream("StreamVapor", Defaults("S03", "Compressed mixture"), "C", "out", "COOL", "in");
        addStream("StreamVapor", Defaults("S04", "Compressed gas outlet"), "COOL", "vapor", "sink", "in");
        addStream("StreamLiquid", Defaults("S05", "Condensate outlet"), "COOL", "condensate", "sink", "in");
    }
    setInputConnection("S02", "in1");
    setOutputConnection("S04", "out1");
    setOutputConnection("S05", "out2");
}

void CompressionStage::pre(SolutionMode, int) {
    TARVO_LOG(3) << "Setting input values";
    Q("COOL.P") = Q("C.P");
}
