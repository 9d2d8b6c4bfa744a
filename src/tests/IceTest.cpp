#include "Bench.h"
#include "RunTarvo.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/models/ICE.h>
#include <tarvo/models/ModelCollection.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/user/Kernel.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int CO2 = 0, CH4 = 1, H2O = 2, N2 = 3, O2 = 4;

Stream& feed(Model& room, ICE& engine, const std::string& tag, double ndot,
             const std::vector<std::pair<int, double>>& x, double T) {
    auto& s = dynamic_cast<Stream&>(room.addChild("StreamVapor", {tag, tag}));
    s.initializeNonPersistents();
    std::string port = "in";
    engine.attach(s, port);
    setMoleFractions(s, ndot, x, 101325.0, T);
    s.calculate(0);
    return s;
}

} // namespace

// The engine of the reference plants on their biogas and air: all methane burns, and the heat given up by the
// streams between the feeds and the flue gas at 353.15 K is the thermal power input, eta of it electric.
TEST(Ice, BurnsTheMethaneAndTurnsAShareOfTheHeatIntoPower) {
    Tarvo::User::setModelCollection(&Tarvo::Models::registerModelCollection);
    Tarvo::User::registerKernelTypes();
    if (!NodeFactory::registered("EngineRoom"))
        NodeFactory::registerType<Bench>("EngineRoom", "Engine under test", "flowsheet", false, {}, {}, {},
                                         "", 10, 10);
    {
        std::unique_ptr<Node> room(
            NodeFactory::create("EngineRoom", {"R", "room"}, 0, nullptr, nullptr, nullptr));
        auto& model = dynamic_cast<Model&>(*room);
        auto& engine = dynamic_cast<ICE&>(model.addChild("ICE", {"ICE", "Internal combustion Engine"}));
        engine.setup();
        EXPECT_EQ(engine.reactions.size(), 1u);
        Stream& biogas = feed(model, engine, "BiogasClean", 0.006482480957734203,
                              {{CH4, 0.55}, {CO2, 0.4}, {H2O, 0.05}}, 313.15);
        Stream& air = feed(model, engine, "AirToICE", 0.1, {{O2, 0.21}, {N2, 0.79}}, 293.15);
        auto& flue = dynamic_cast<Stream&>(model.addChild("StreamIdealLiquidVapor", {"FlueGas", "flue gas"}));
        flue.initializeNonPersistents();
        std::string port = "out";
        engine.attach(flue, port);
        engine.eta = 0.35;
        engine.calculate(0);
        EXPECT_TRUE(engine.errorList().empty());
        const double methane = biogas.Tphase->flow(CH4).toDouble();
        EXPECT_NEAR(flue.Tphase->flow(CH4).toDouble(), 0.0, 1e-18);
        EXPECT_NEAR(flue.Tphase->flow(O2).toDouble(), air.Tphase->flow(O2).toDouble() - 2 * methane, 1e-15);
        EXPECT_DOUBLE_EQ(flue.T.toDouble(), 353.15);
        EXPECT_DOUBLE_EQ(flue.P.toDouble(), 101325.0);
        const double heat = enthalpyFlow(biogas) + enthalpyFlow(air) - enthalpyFlow(flue);
        EXPECT_NEAR(engine.Wt.toDouble(), heat, 1e-9 * heat);
        EXPECT_NEAR(engine.We.toDouble(), 0.35 * heat, 1e-9 * heat);
        // Most of the lower heating value of the methane, 802310 kJ/kmol in the reference plants.
        EXPECT_GT(heat, 0.9 * 802310e3 * methane);
        EXPECT_LT(heat, 802310e3 * methane);
    }
    Tarvo::Core::stopKernel();
}

// The catalogue lists every reaction, flash drum and the engine, in the order of registration, none of them
// instantiable; the engine cannot stand at the root of a case.
TEST(Ice, CatalogueListsTheReactionsAndFlashDrums) {
    TemporaryFolder folder;
    const TarvoRun types = runTarvo({"types"}, folder.path());
    ASSERT_EQ(types.exitCode, 0) << types.err;
    const std::string& out = types.out;
    const std::vector<std::string> rows{"ReactionYield",
                                        "ReactionWaterGasShift",
                                        "ReactionWaterGasC",
                                        "ReactionOxidationEquilibriumCH4",
                                        "ReactionOxidationCO",
                                        "ReactionReformingCH4",
                                        "ReactionReformingC3H8",
                                        "ReactionWaterGasShiftEquilibrium",
                                        "ReactionReformingEquilibriumCH4",
                                        "ReactionReformingEquilibriumC3H8",
                                        "ReactionReformingC2H6",
                                        "ReactionReformingEquilibriumC2H6",
                                        "ReactionOxidationMeOH",
                                        "ReactionReformingMeOH",
                                        "ReactionReformingEquilibriumMeOH",
                                        "ReactionSynthesisNH3",
                                        "ReactionSynthesisEquilibriumNH3",
                                        "ReactionOxidationN2",
                                        "ReactionOxidationEquilibriumN2",
                                        "ReactionOxidationNH3",
                                        "ReactionOxidationPhenol",
                                        "ReactionOxidationC",
                                        "ReactionOxidationH2",
                                        "ReactionOxidationCH4",
                                        "ReactionOxidationC2H6",
                                        "ReactionOxidationC2H4",
                                        "ReactionOxidationHydrocarbon",
                                        "ReactionOxidationHydrocarbon<3,8>",
                                        "ReactionOxidationHydrocarbon<4,10>",
                                        "ReactionOxidationHydrocarbon<5,12>",
                                        "ReactionOxidationHydrocarbon<6,14>",
                                        "ReactionOxidationNaphthalene",
                                        "Divider",
                                        "Mixer",
                                        "Separator",
                                        "Separator<2>",
                                        "Separator<3>",
                                        "FlashDrum",
                                        "Degasser",
                                        "Splitter",
                                        "FlashSplitter",
                                        "FlashSplitter<StreamIdealLiquidSolid>",
                                        "FlashSplitter<StreamIdealLiquidSolidVapor>",
                                        "FlashDegasser",
                                        "FlashDegasser<StreamIdealLiquidVapor>",
                                        "FlashDegasser<StreamIdealSolidVapor>",
                                        "FlashDegasser<StreamIdealLiquidSolidVapor>",
                                        "ICE"};
    std::size_t previous = 0;
    for (const std::string& row : rows) {
        const std::size_t at = out.find("{\"name\":\"" + row + "\", ");
        ASSERT_NE(at, std::string::npos) << row;
        EXPECT_GT(at, previous) << row;
        previous = at;
        const std::size_t end = out.find(" }", at);
        const std::string record = out.substr(at, end - at);
        EXPECT_NE(record.find("\"instantiable\":false"), std::string::npos) << record;
        const bool reaction = row.compare(0, 8, "Reaction") == 0;
        EXPECT_NE(record.find(reaction ? "\"category\":\"option\"" : "\"category\":\"unit\""),
                  std::string::npos)
            << record;
        if (reaction) {
            EXPECT_NE(record.find(
                          row.find("Equilibrium") == std::string::npos
                              ? "{\"name\":\"option\",\"description\":\"Calculation option\",\"value\":\"z\""
                              : "\"value\":\"equilibrium\""),
                      std::string::npos)
                << record;
        }
    }
    EXPECT_NE(
        out.find("{\"name\":\"FlashDrum\", \"description\":\"Flash drum with optional reactions\", "
                 "\"category\":\"unit\", \"icon\":\"unit.svg\", \"instantiable\":false, \"integerOptions\":"
                 "[{\"name\":\"nReactions\",\"description\":\"Number of reactions\",\"value\":0,\"min\":-1,"
                 "\"max\":2147483647}], \"stringOptions\":[{\"name\":\"option\",\"description\":\"Flash "
                 "configuration option\",\"value\":\"PT\",\"enumerator\":\"\"},{\"name\":\"reactionMode\","
                 "\"description\":\"Reaction processing mode\",\"value\":\"series\",\"enumerator\":\"\"}], "
                 "\"quantities\":[] }"),
        std::string::npos);
    // An alias fixes the inner stream and no longer offers it.
    const std::size_t alias = out.find("{\"name\":\"FlashDegasser<StreamIdealLiquidVapor>\"");
    EXPECT_EQ(out.substr(alias, out.find(" }", alias) - alias).find("embeddedTypeStream"), std::string::npos);
    EXPECT_NE(
        out.find(
            "{\"name\":\"ICE\", \"description\":\"Internal Combustion Engine\", \"category\":\"unit\", "
            "\"icon\":\"unit.svg\", \"instantiable\":false, \"integerOptions\":[], \"stringOptions\":[], "
            "\"quantities\":[] }"),
        std::string::npos);

    const TarvoRun engine = runTarvo({"new", "ICE"}, folder.path());
    EXPECT_NE(engine.exitCode, 0);
    EXPECT_NE(engine.err.find("type ICE can not be the root of a case"), std::string::npos) << engine.err;
}
