#include "FlowsheetFixtures.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/flowsheet/RegisterFlowsheet.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/phases/RegisterPhases.h>
#include <tarvo/streams/RegisterStreams.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/Divider.h>
#include <tarvo/units/RegisterReactions.h>
#include <tarvo/units/RegisterUnits.h>
#include <tarvo/units/Separator.h>

#include <unistd.h>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::CutsSolution;

namespace {
// A feed of the same mass fraction of every component.
void setEvenFeed(Stream& feed, const Value& mdot, const Value& P, const Value& T) {
    feed.Tphase->mdot = mdot;
    for (int i = 0; i < NCOMPONENTS; ++i)
        feed.Tphase->w[i] = 1.0 / NCOMPONENTS;
    feed.P = P;
    feed.T = T;
}
} // namespace

BareSheet::BareSheet(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                     Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root) {}

LoopSheet::LoopSheet(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                     Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root) {
    method = retrieveInteger(defaults, id, persistency, "method", 0, 4, 1);
    passes = retrieveInteger(defaults, id, persistency, "passes", 0, 100000, 500);
    design = retrieveInteger(defaults, id, persistency, "design", -1, 2, 0);
    addVariable(method);
    addVariable(passes);
    addVariable(design);
    addVariable(water);
    setCutsSolution(static_cast<CutsSolution>(method.value()));
    if (!persistency) {
        const std::string type = retrieveString(defaults, id, persistency, "stream", "StreamSimpleLiquid");
        addUnit("Mixer", {"MIX", "Feed and recycle"});
        addUnit("Separator<2>", {"SEP", "Product and recycle"});
        addStream(type, {"FEED", "Feed"}, "source", "out", "MIX", "in");
        addStream(type, {"MIXED", "Feed and recycle"}, "MIX", "out", "SEP", "in");
        addStream(type, {"PROD", "Product"}, "SEP", "out", "sink", "in");
        addStream(type, {"REC", "Recycle"}, "SEP", "out", "MIX", "in");
        auto& feed = dynamic_cast<Stream&>(child("FEED"));
        feed.Tphase->mdot = Value(3600.0, "kg/h");
        const double w[] = {0.1, 0.2, 0.4, 0.2, 0.1};
        for (int i = 0; i < NCOMPONENTS; ++i)
            feed.Tphase->w[i] = w[i];
        feed.P = Value(2e5, "Pa");
        feed.T = Value(320.0, "K");
        // Any pressure up to the feed's is a steady state of the loop: its first estimate picks the one.
        dynamic_cast<Stream&>(child("REC")).P = Value(2e5, "Pa");
        auto& separator = dynamic_cast<Separator&>(child("SEP"));
        const double s[] = {0.7, 0.5, 0.9, 0.3, 0.6};
        for (int i = 0; i < NCOMPONENTS; ++i)
            separator.outSplit[0][i] = s[i];
        separator.T = Value(330.0, "K");
        separator.option = "D"; // no drop: the loop keeps the feed's pressure
        seqTol = 1e-13;
    }
    setInputConnection("FEED", "in1");
    setOutputConnection("PROD", "out1");
}

void LoopSheet::makeUserEquations(std::list<Assignment*>::iterator& it) {
    if (design.value() != 1) return;
    const Value recycle(water.value(), "kg/h");
    Value& split = dynamic_cast<Separator&>(child("SEP")).outSplit[0][2];
    const Value& mixed = dynamic_cast<Stream&>(child("MIXED")).Tphase->mdotcomps[2];
    // The split of water that leaves the wanted recycle of the present mixed flow; bounded to (0, 1).
    makeAssignment(it, split, 1.0 - recycle / mixed, "SEP.outSplit[0][2]", "Water split to product", 2,
                   Tarvo::Utility::ScalingMode::arctangentExclusive, 0.0, 1.0, one);
}

void LoopSheet::setup() {
    addCut("REC");
    FlowSheet::setup();
}

PlantSheet::PlantSheet(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                       Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root) {
    if (persistency) return;
    addUnit("TestLoop", Defaults("G", "Loop inside").setInteger("method", 3));
    addStream("StreamSimpleLiquid", {"FEED", "Feed of the plant"}, "source", "out", "G", "in");
    addStream("StreamSimpleLiquid", {"PROD", "Product of the plant"}, "G", "out", "sink", "in");
    setEvenFeed(dynamic_cast<Stream&>(child("FEED")), Value(7200.0, "kg/h"), Value(3e5, "Pa"),
                Value(300.0, "K"));
}

SplitSheet::SplitSheet(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                       Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root) {
    setCutsSolution(CutsSolution::newton);
    if (persistency) return;
    addUnit("Divider", Defaults("D", "Three outlets").setInteger("nOutlets", 3));
    addStream("StreamSimpleLiquid", {"F", "Feed"}, "source", "out", "D", "in");
    for (const char* outlet : {"A", "B", "C"})
        addStream("StreamSimpleLiquid", {outlet, "Outlet"}, "D", "out", "sink", "in");
    setEvenFeed(dynamic_cast<Stream&>(child("F")), Value(3600.0, "kg/h"), Value(2e5, "Pa"),
                Value(320.0, "K"));
}

void SplitSheet::makeUserEquations(std::list<Assignment*>::iterator& it) {
    static const Value lead(0.2);
    auto& divider = dynamic_cast<Divider&>(child("D"));
    makeAssignment(it, divider.outSplit[0], divider.outSplit[1] + lead, "D.outSplit[0]", "Lead of A over B",
                   0, Tarvo::Utility::ScalingMode::noscaling, 0.0, 1.0, one);
    makeAssignment(it, divider.outSplit[1], divider.outSplit[2], "D.outSplit[1]", "B as much as C", 1,
                   Tarvo::Utility::ScalingMode::noscaling, 0.0, 1.0, one);
}

void FlowsheetTest::SetUp() {
    Tarvo::Core::startKernel();
    registerPhases();
    registerStreams();
    registerReactions();
    registerUnits();
    registerFlowsheet();
    if (!NodeFactory::registered("TestLoop")) {
        NodeFactory::registerType<BareSheet>("TestBare", "Empty flowsheet", "flowsheet", true, {}, {}, {}, "",
                                             10, 10);
        NodeFactory::registerType<LoopSheet>("TestLoop", "Recycle loop", "flowsheet", true, {}, {}, {}, "",
                                             10, 10);
        NodeFactory::registerType<PlantSheet>("TestPlant", "Loop in a plant", "flowsheet", true, {}, {}, {},
                                              "", 10, 10);
        NodeFactory::registerType<SplitSheet>("TestSplit", "Divider by design", "flowsheet", true, {}, {}, {},
                                              "", 10, 10);
    }
    char pattern[] = "/tmp/tarvo-flowsheet-XXXXXX";
    folder_ = mkdtemp(pattern);
    previous_ = std::filesystem::current_path();
    std::filesystem::current_path(folder_);
}

void FlowsheetTest::TearDown() {
    std::filesystem::current_path(previous_);
    std::filesystem::remove_all(folder_);
    Tarvo::Core::stopKernel();
}

double FlowsheetTest::flow(Object& sheet, const std::string& stream, int i) {
    return dynamic_cast<Stream&>(sheet.at(stream)).Tphase->mdotcomps[i].toDouble("kg/h");
}
