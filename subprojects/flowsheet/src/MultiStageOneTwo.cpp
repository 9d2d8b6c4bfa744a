#include <tarvo/flowsheet/MultiStageOneTwo.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/utility/FunctionName.h>

#include <climits>

using Tarvo::Persistency::Defaults;

namespace {
std::string indexed(const std::string& tag, int i) {
    return tag + "[" + std::to_string(i) + "]";
}
} // namespace

MultiStageOneTwo::MultiStageOneTwo(const Defaults& defaults, uint32_t id, Persistency* persistency,
                                   Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root) {
    nStage = retrieveInteger(defaults, id, persistency, "nStage", 0, INT_MAX, 1);
    addVariable(nStage);
    addVariable(deltaP);
    deltaP.setOutput();
    if (!persistency) {
        const std::string typeT = retrieveString(defaults, id, persistency, "typeT", "");
        const std::string typeU = retrieveString(defaults, id, persistency, "typeU", "StreamVapor");
        const std::string typeV = retrieveString(defaults, id, persistency, "typeV", "StreamLiquid");
        if (typeT.empty()) throw ErrorRunTime(TARVO_FUNCTION, "type unspecified for " + indexed("S", 0));
        const int n = nStage.value();
        for (int i = 0; i < n; ++i)
            addUnit(typeT, Defaults(indexed("S", i), "Stage " + std::to_string(i)));
        addUnit("Mixer", Defaults("MIX", "Mix crossflow streams"));
        addStream(typeU, Defaults("FEED", "feed to stage 0"), "source", "out", indexed("S", 0), "in");
        for (int i = 0; i + 1 < n; ++i)
            addStream(typeU,
                      Defaults(indexed("U", i), "stream from stage " + std::to_string(i) + " to stage " +
                                                    std::to_string(i + 1)),
                      indexed("S", i), "out1", indexed("S", i + 1), "in");
        addStream(typeU, Defaults("OUT1", "product from stage " + std::to_string(n - 1)), indexed("S", n - 1),
                  "out1", "sink", "in");
        for (int i = 0; i < n; ++i)
            addStream(typeV, Defaults(indexed("V", i), "crossflow stream from stage " + std::to_string(i)),
                      indexed("S", i), "out2", "MIX", "in");
        addStream(typeV, Defaults("OUT2", "crossflow product"), "MIX", "out", "sink", "in");
    }
    setInputConnection("FEED", "in1");
    setOutputConnection("OUT1", "out1");
    setOutputConnection("OUT2", "out2");
}

Object& MultiStageOneTwo::stage(int i) const {
    return *my_cast_in<Object*>(&child(indexed("S", i)), __PRETTY_FUNCTION__);
}

void MultiStageOneTwo::post(SolutionMode, int) {
    deltaP = dynamic_cast<Stream&>(child("FEED")).P - dynamic_cast<Stream&>(child("OUT1")).P;
}
