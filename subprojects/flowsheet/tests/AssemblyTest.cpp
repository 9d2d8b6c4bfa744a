#include "FlowsheetFixtures.h"

#include <tarvo/flowsheet/Terminator.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/streams/Stream.h>

using Tarvo::Persistency::Defaults;

namespace {
bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}
} // namespace

TEST_F(FlowsheetTest, StreamsJoinUnitsThroughPortsWithOutAndIn) {
    auto sheet = bare();
    sheet->addUnit("Mixer", {"M", "mixer"});
    sheet->addUnit("Divider", {"D", "divider"});
    EXPECT_TRUE(contains(thrown([&] {
                             sheet->addStream("StreamSimpleLiquid", {"X", ""}, "M", "out", "M", "in");
                         }),
                         "can not attach to self"));
    EXPECT_TRUE(contains(thrown([&] {
                             sheet->addStream("StreamSimpleLiquid", {"X", ""}, "M", "x1", "D", "in");
                         }),
                         "the from port does not contain out"));
    EXPECT_TRUE(contains(thrown([&] {
                             sheet->addStream("StreamSimpleLiquid", {"X", ""}, "M", "out", "D", "x1");
                         }),
                         "the to port does not contain in"));

    sheet->addStream("StreamSimpleLiquid", {"F1", "feed"}, "source", "out", "M", "in");
    sheet->addStream("StreamSimpleLiquid", {"F2", "feed"}, "source", "out", "M", "in");
    sheet->addStream("StreamSimpleLiquid", {"S", "mixed"}, "M", "out", "D", "in");
    auto& s = dynamic_cast<Stream&>(sheet->child("S"));
    // The numbered ports are what the stream remembers, and what check compares with the vertices.
    EXPECT_EQ(s.fromPort.value(), "out1");
    EXPECT_EQ(s.toPort.value(), "in1");
    EXPECT_EQ(dynamic_cast<Stream&>(sheet->child("F2")).toPort.value(), "in2");
    EXPECT_EQ(dynamic_cast<Stream&>(sheet->child("F2")).fromPort.value(), "out2");

    // Nothing leaves yet.
    EXPECT_TRUE(contains(thrown([&] { sheet->check(); }), "there is no out-flow from the flowsheet"));
    sheet->addStream("StreamSimpleLiquid", {"P1", "product"}, "D", "out", "sink", "in");
    sheet->addStream("StreamSimpleLiquid", {"P2", "product"}, "D", "out", "sink", "in");
    sheet->check();
    s.toPort = "in2";
    EXPECT_TRUE(contains(thrown([&] { sheet->check(); }), "connectivity mismatch"));

    auto empty = bare();
    empty->addUnit("Mixer", {"M", "mixer"});
    empty->addStream("StreamSimpleLiquid", {"P", "product"}, "M", "out", "sink", "in");
    EXPECT_TRUE(contains(thrown([&] { empty->check_inout(); }), "there is no in-flow to the flowsheet"));
    EXPECT_TRUE(contains(thrown([&] {
                             empty->addUnit("Terminator", {"x", "boundary"});
                         }),
                         "invalid tag for Terminator: only source or sink allowed"));
}

TEST_F(FlowsheetTest, ACutOpensTheRecycleAndRemovingItClosesIt) {
    auto loop = make<LoopSheet>("TestLoop"); // cut at REC by its setup
    auto& rec = dynamic_cast<Stream&>(loop->child("REC"));
    auto& bis = dynamic_cast<Stream&>(loop->child("RECbis"));
    EXPECT_EQ(rec.toTAG.value(), "sink");
    EXPECT_EQ(rec.cutdest.value(), "RECbis");
    EXPECT_EQ(bis.fromTAG.value(), "source");
    EXPECT_EQ(bis.toTAG.value(), "MIX");
    EXPECT_EQ(bis.toPort.value(), "in2");
    EXPECT_EQ(bis.cutsource.value(), "REC");
    EXPECT_EQ(bis.description(), "Recycle");
    EXPECT_EQ(&dynamic_cast<Connectivity&>(loop->child("MIX")).inlet(1), &bis);
    loop->check();

    loop->removeCut("REC");
    EXPECT_FALSE(loop->hasChild("RECbis"));
    EXPECT_EQ(rec.toTAG.value(), "MIX");
    EXPECT_EQ(rec.toPort.value(), "in2");
    EXPECT_TRUE(rec.cutdest.value().empty());
    EXPECT_EQ(&dynamic_cast<Connectivity&>(loop->child("MIX")).inlet(1), &rec);
    loop->check();
    // With the recycle closed again the graph has a cycle that no cut opens.
    EXPECT_TRUE(
        contains(thrown([&] { loop->go(Calculatable::sequential, 0); }), "recycle that no cut stream opens"));
}

TEST_F(FlowsheetTest, PortsOfAFlowsheetNameItsFeedsAndProducts) {
    auto loop = make<LoopSheet>("TestLoop"); // FEED at in1, PROD at out1
    EXPECT_EQ(loop->inletTag(0), "FEED");
    EXPECT_EQ(loop->outletTag(0), "PROD");
    EXPECT_EQ(loop->inletConnection("FEED"), 0);
    EXPECT_EQ(loop->outletConnection("PROD"), 0);
    EXPECT_TRUE(contains(thrown([&] { loop->setInputConnection("MIXED", "in2"); }),
                         "stream MIXED is not coming from source"));
    EXPECT_TRUE(contains(thrown([&] { loop->setOutputConnection("MIXED", "out2"); }),
                         "stream MIXED is not going to sink"));
    EXPECT_TRUE(
        contains(thrown([&] { loop->setInputConnection("FEED", "in1"); }), "port in1 already connected"));
    EXPECT_TRUE(contains(thrown([&] { loop->inletTag(1); }), "index is out of range"));
    EXPECT_TRUE(contains(thrown([&] { loop->inletConnection("PROD"); }),
                         "the supplied tag does not correspond to an inlet stream"));
    EXPECT_TRUE(contains(thrown([&] { loop->inletIdFromPort("feed"); }), "port name is invalid"));
    EXPECT_TRUE(contains(thrown([&] { loop->outletIdFromPort("out0"); }), "port id is invalid"));
    EXPECT_EQ(loop->outletIdFromPort("out12"), 11);
}
