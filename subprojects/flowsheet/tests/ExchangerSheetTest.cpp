#include "Bench.h"
#include "FlowsheetFixtures.h"

#include <tarvo/streams/Stream.h>
#include <tarvo/units/Divider.h>
#include <tarvo/units/Exchanger.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int H2O = 2;

// Hot water HOT and the recycle REC meet in the mixer MIX and heat the cold water COLD in the exchanger X;
// half of the cooled water goes back as REC, which is cut. The mixer has no system of its own: in a
// simultaneous solve its outlet's temperature, which the exchanger's approaches read, is the flowsheet's.
std::unique_ptr<FlowSheet> heatRecovery(std::unique_ptr<FlowSheet> sheet) {
    sheet->addUnit("Mixer", {"MIX", "hot water and recycle"});
    sheet->addUnit("Exchanger", {"X", "recovery"});
    sheet->addUnit("Divider", {"DIV", "recycle and product"});
    sheet->addStream("StreamLiquid", {"HOT", "hot water"}, "source", "out", "MIX", "in");
    sheet->addStream("StreamLiquid", {"MIXED", "hot water and recycle"}, "MIX", "out", "X", "hotin");
    sheet->addStream("StreamLiquid", {"COOLED", "cooled water"}, "X", "hotout", "DIV", "in");
    sheet->addStream("StreamLiquid", {"REC", "recycle"}, "DIV", "out", "MIX", "in");
    sheet->addStream("StreamLiquid", {"PROD", "product"}, "DIV", "out", "sink", "in");
    sheet->addStream("StreamLiquid", {"COLD", "cold water"}, "source", "out", "X", "coldin");
    sheet->addStream("StreamLiquid", {"WARM", "warmed water"}, "X", "coldout", "sink", "in");
    sheet->addCut("REC");
    setMoleFractions(dynamic_cast<Stream&>(sheet->child("HOT")), 0.1, {{H2O, 1.0}}, 3e5, 370);
    setMoleFractions(dynamic_cast<Stream&>(sheet->child("COLD")), 0.2, {{H2O, 1.0}}, 3e5, 290);
    dynamic_cast<Divider&>(sheet->child("DIV")).outSplit[0] = 0.5;
    auto& x = dynamic_cast<Exchanger&>(sheet->child("X"));
    x.U = Value(1000.0, "W/(m2*K)");
    sheet->setup();
    sheet->initializeNonPersistents();
    return sheet;
}

// A bare flowsheet makes five sequential passes a call; the loop converges by about half its error in each.
void converge(FlowSheet& sheet) {
    for (int call = 0; call < 12; ++call)
        sheet.go(Calculatable::sequential, 0);
}

double temperature(FlowSheet& sheet, const std::string& tag) {
    return dynamic_cast<Stream&>(sheet.child(tag)).T.toDouble();
}
} // namespace

// The exchanger's duty and its outlets' flashes join the unknowns of the flowsheet: the simultaneous solve
// finds the state that the sequential one finds.
TEST_F(FlowsheetTest, ExchangerInARecycleConvergesSimultaneouslyAsSequentially) {
    std::unique_ptr<FlowSheet> sheets[2] = {heatRecovery(bare()), heatRecovery(bare())};
    converge(*sheets[0]);
    sheets[1]->calculate(0); // sequentially first, then simultaneously
    // A new area: the simultaneous solve starts from the state of the old one.
    for (auto& sheet : sheets)
        dynamic_cast<Exchanger&>(sheet->child("X")).A = Value(20.0, "m2");
    converge(*sheets[0]);
    sheets[1]->go(Calculatable::simultaneous, 0);
    EXPECT_GT(sheets[1]->NITER.value(), 0);
    for (auto& sheet : sheets) {
        EXPECT_TRUE(sheet->errorList().empty()) << sheet->errorList().front();
        auto& x = dynamic_cast<Exchanger&>(sheet->child("X"));
        EXPECT_NEAR(x.dutyhot.toDouble(), 1e3 * 20 * x.MTD.toDouble(), 1e-8 * x.dutyhot.toDouble());
        // Half of the product is recycled: the loop carries as much as the hot feed.
        EXPECT_NEAR(flow(*sheet, "REC", H2O), flow(*sheet, "HOT", H2O), 1e-8 * flow(*sheet, "HOT", H2O));
    }
    for (const char* tag : {"MIXED", "COOLED", "RECbis", "WARM"})
        EXPECT_NEAR(temperature(*sheets[1], tag), temperature(*sheets[0], tag), 1e-8) << tag;
    const auto duty = [](FlowSheet& sheet) { return dynamic_cast<Exchanger&>(sheet.child("X")).dutyhot.toDouble(); };
    EXPECT_NEAR(duty(*sheets[1]), duty(*sheets[0]), 1e-8 * duty(*sheets[0]));
}
