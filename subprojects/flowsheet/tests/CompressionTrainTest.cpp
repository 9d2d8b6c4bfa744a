#include "Bench.h"
#include "FlowsheetFixtures.h"

#include "TemporaryDatabase.h"

#include <tarvo/flowsheet/MultiCompressorIntercooled.h>
#include <tarvo/persistency/PersistencyPostgres.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>

#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int CO2 = 0, CH4 = 1, H2O = 2;

// Vapor pressure of water, Pa: DIPPR equation 101, exp(A + B/T + C ln T + D T^E), with the constants of
// Perry's 8th ed. Table 2-8 in ../shared/data/dippr_like.csv (water, Psat).
double psatWater(double T) {
    return std::exp(73.649 - 7258.2 / T - 7.3037 * std::log(T) + 4.1653e-06 * T * T);
}

Stream& streamOf(Object& sheet, const std::string& tag) {
    return dynamic_cast<Stream&>(sheet.child(tag));
}

double x(Stream& s, int i) {
    return s.Q("Tphase.x", i).toDouble();
}

// A plant around the train COMPR of wet biogas LOWP at 1 bar, to the discharge pressure P with the coolers at
// 313.15 K; the products are HIGHP and HIGHPLIQ.
MultiCompressorIntercooled<2>& addTrain(FlowSheet& sheet, double P) {
    sheet.addUnit("MultiCompressorIntercooled2", Defaults("COMPR", "Compressor"));
    sheet.addStream("StreamVapor", {"LOWP", "wet biogas"}, "source", "out", "COMPR", "in");
    sheet.addStream("StreamVapor", {"HIGHP", "compressed biogas"}, "COMPR", "gasout", "sink", "in");
    sheet.addStream("StreamLiquid", {"HIGHPLIQ", "condensate"}, "COMPR", "liqout", "sink", "in");
    auto& train = dynamic_cast<MultiCompressorIntercooled<2>&>(sheet.child("COMPR"));
    sheet.setup();
    sheet.initializeNonPersistents();
    setMoleFractions(streamOf(sheet, "LOWP"), 0.01, {{CH4, 0.55}, {CO2, 0.4}, {H2O, 0.05}}, 1e5, 313.15);
    train.P = Value(P, "Pa");
    train.T = Value(313.15, "K");
    train.theta = 0.75;
    train.etaM = 0.95;
    train.etaE = 0.98;
    return train;
}
} // namespace

// Wet biogas compressed from 1 to 9 bar in two stages, as a unit COMPR of a plant: each stage raises the
// pressure threefold and cools to 313.15 K, where water condenses; the condensates leave together by liqout.
// Each unit and the whole train give up as duty what the shaft work and the feed bring in.
TEST_F(FlowsheetTest, TwoStageTrainCompressesWetBiogasAndKnocksOutTheWater) {
    auto sheet = bare();
    auto& train = addTrain(*sheet, 9e5);
    Stream& feed = streamOf(*sheet, "LOWP");
    sheet->go(Calculatable::sequential, 0);
    sheet->reportMessages();
    ASSERT_TRUE(sheet->errorList().empty()) << sheet->errorList().front();

    EXPECT_DOUBLE_EQ(train.cr.toDouble(), 9.0);
    double power = 0, cooling = 0, condensate = 0, work = 0;
    for (int k = 0; k < 2; ++k) {
        Object& stage = train.stage(k);
        const double P = 3e5 * (k + 1 == 2 ? 3 : 1);
        EXPECT_NEAR(stage.Q("C.P").toDouble(), P, 1e-9 * P) << k;
        Stream &in = streamOf(stage, "S02"), &hot = streamOf(stage, "S03");
        Stream &gas = streamOf(stage, "S04"), &liquid = streamOf(stage, "S05");
        EXPECT_NEAR(gas.P.toDouble(), P, 1e-9 * P) << k;
        EXPECT_NEAR(stage.Q("COOL.P").toDouble(), P, 1e-9 * P) << k;
        EXPECT_DOUBLE_EQ(gas.T.toDouble(), 313.15) << k;
        EXPECT_DOUBLE_EQ(liquid.T.toDouble(), 313.15) << k;
        // Raoult's law of the ideal stream: the gas holds the water that its condensate's vapor pressure
        // allows.
        ASSERT_GT(liquid.Tphase->flow(H2O).toDouble(), 0.0) << k;
        const double y = x(liquid, H2O) * psatWater(313.15) / P;
        EXPECT_NEAR(x(gas, H2O), y, 1e-8 * y) << k;
        // Each unit's balance: the compressor's fluid power goes into the gas, the cooler's duty out of it.
        const double Wf = stage.Q("C.Wf").toDouble(), Hin = enthalpyFlow(in);
        EXPECT_NEAR(enthalpyFlow(hot) - Hin, Wf, 1e-9 * std::fabs(Hin)) << k;
        EXPECT_NEAR(enthalpyFlow(hot) - enthalpyFlow(gas) - enthalpyFlow(liquid),
                    stage.Q("COOL.duty").toDouble(), 1e-9 * std::fabs(Hin))
            << k;
        power += stage.Q("C.We").toDouble();
        cooling += stage.Q("COOL.duty").toDouble();
        condensate += liquid.Tphase->flow(H2O).toDouble();
        work += Wf;
    }
    EXPECT_DOUBLE_EQ(train.We.toDouble(), power);
    EXPECT_DOUBLE_EQ(train.duty.toDouble(), cooling);
    EXPECT_NEAR(train.We.toDouble(), work / 0.95 / 0.98, 1e-12 * work);
    Stream &gasout = streamOf(*sheet, "HIGHP"), &liqout = streamOf(*sheet, "HIGHPLIQ");
    EXPECT_NEAR(liqout.Tphase->flow(H2O).toDouble(), condensate, 1e-12 * condensate);
    EXPECT_NEAR(gasout.Tphase->flow(H2O).toDouble() + condensate, feed.Tphase->flow(H2O).toDouble(), 1e-15);
    EXPECT_NEAR(gasout.P.toDouble(), 9e5, 1e-9 * 9e5);
    // The train's balance: feed and shaft work in, cooler duty and products out.
    const double Hfeed = enthalpyFlow(feed);
    EXPECT_NEAR(Hfeed + work - enthalpyFlow(gasout) - enthalpyFlow(liqout), train.duty.toDouble(),
                1e-9 * std::fabs(Hfeed));
    EXPECT_NEAR(train.deltaP.toDouble(), 1e5 - 9e5, 1e-9 * 9e5);
}

// The compressors' unknowns, their outlets' and isentropic end states' flashes, join the plant's system: a
// new discharge pressure solved simultaneously gives the state that a sequential calculation gives.
TEST_F(FlowsheetTest, TrainConvergesSimultaneouslyAsSequentially) {
    std::unique_ptr<FlowSheet> sheets[2];
    for (auto& sheet : sheets) {
        sheet = bare();
        addTrain(*sheet, 9e5);
    }
    sheets[0]->go(Calculatable::sequential, 0);
    sheets[1]->calculate(0); // sequentially first, then simultaneously
    for (auto& sheet : sheets)
        dynamic_cast<MultiCompressorIntercooled<2>&>(sheet->child("COMPR")).P = Value(6e5, "Pa");
    sheets[0]->go(Calculatable::sequential, 0);
    sheets[1]->go(Calculatable::simultaneous, 0);
    EXPECT_GT(sheets[1]->NITER.value(), 0);
    for (auto& sheet : sheets) {
        sheet->reportMessages();
        EXPECT_TRUE(sheet->errorList().empty()) << sheet->errorList().front();
    }
    const auto result = [](FlowSheet& sheet, const char* path) { return sheet.Q(path).toDouble(); };
    for (const char* path : {"HIGHP.T", "HIGHP.P", "COMPR.We", "COMPR.duty"})
        EXPECT_NEAR(result(*sheets[1], path), result(*sheets[0], path),
                    1e-8 * std::fabs(result(*sheets[0], path)))
            << path;
    for (const char* stream : {"HIGHP", "HIGHPLIQ"})
        for (int i = 0; i < NCOMPONENTS; ++i)
            EXPECT_NEAR(flow(*sheets[1], stream, i), flow(*sheets[0], stream, i),
                        1e-8 * flow(*sheets[0], "LOWP", i))
                << stream << " " << i;
}

// A plant with a train, stored before its first calculation: retrieved, the stages find their units and the
// compressors make their isentropic end states again, and the case calculates as it does in memory.
TEST_F(FlowsheetTest, StoredTrainCalculatesAsInMemory) {
    TemporaryDatabase database;
    PersistencyPostgres store(database.connection());
    const auto build = [this] {
        auto sheet = bare();
        addTrain(*sheet, 9e5);
        return sheet;
    };
    auto memory = build();
    const int id = build()->insert(&store);
    memory->go(Calculatable::sequential, 0);
    std::unique_ptr<Node> node(
        NodeFactory::create("TestBare", Defaults(), static_cast<uint32_t>(id), &store, nullptr, nullptr));
    auto& stored = dynamic_cast<FlowSheet&>(*node);
    stored.initializeNonPersistents();
    stored.go(Calculatable::sequential, 0);
    stored.reportMessages();
    EXPECT_TRUE(stored.errorList().empty()) << stored.errorList().front();
    EXPECT_EQ(stored.child("COMPR").type(), "MultiCompressorIntercooled2");
    for (const char* path : {"HIGHP.T", "COMPR.We", "COMPR.duty", "COMPR.cr"})
        EXPECT_DOUBLE_EQ(stored.Q(path).toDouble(), memory->Q(path).toDouble()) << path;
    for (int i = 0; i < NCOMPONENTS; ++i)
        EXPECT_DOUBLE_EQ(flow(stored, "HIGHPLIQ", i), flow(*memory, "HIGHPLIQ", i)) << i;
}

// Every type of the compression family made at the root from its catalogue defaults, as a new case would be,
// and calculated: a result, or errors in words, never an exception or a crash.
TEST_F(FlowsheetTest, CompressionTypesCalculateFromTheirDefaults) {
    for (const std::string type : {"Compressor", "Pump", "CompressionStage", "MultiCompressorIntercooled1",
                                   "MultiCompressorIntercooled2", "MultiCompressorIntercooled3"}) {
        std::unique_ptr<Model> model(dynamic_cast<Model*>(
            NodeFactory::create(type, Defaults("ROOT", "from defaults"), 0, nullptr, nullptr, nullptr)));
        ASSERT_TRUE(model) << type;
        EXPECT_EQ(thrown([&] {
                      model->setup();
                      model->initializeNonPersistents();
                      model->calculate(0);
                      model->reportMessages();
                  }),
                  "")
            << type;
        // The units stand without streams; the assemblies bring their own, with the streams' default flows.
        const bool unit = type == "Compressor" || type == "Pump";
        EXPECT_EQ(model->errorList(), unit ? std::vector<std::string>{"no inlet connected, nothing to do"}
                                           : std::vector<std::string>{})
            << type;
    }
}
