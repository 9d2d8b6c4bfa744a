#include "Bench.h"
#include "FlowsheetFixtures.h"
#include "TemporaryDatabase.h"

#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/components/ListComponents.h>
#include <tarvo/persistency/PersistencyPostgres.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/FlashDrum.h>
#include <tarvo/units/Reaction.h>

#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
// The drum D, set up by `drum`, where half of the methane of the biogas GAS burns with the air AIR, both
// from the source.
FlashDrum& addBurner(FlowSheet& sheet, Defaults drum) {
    sheet.addUnit("FlashDrum",
                  drum.setInteger("nReactions", 1).setString("embeddedTypeReactions[0]", "ReactionOxidationCH4"));
    sheet.addStream("StreamVapor", {"GAS", "biogas"}, "source", "out", "D", "in");
    sheet.addStream("StreamVapor", {"AIR", "air"}, "source", "out", "D", "in");
    setMoleFractions(dynamic_cast<Stream&>(sheet.child("GAS")), 0.01, {{1, 0.55}, {0, 0.4}, {2, 0.05}}, 1.2e5,
                     313.15);
    setMoleFractions(dynamic_cast<Stream&>(sheet.child("AIR")), 0.06, {{4, 0.21}, {3, 0.79}}, 1.2e5, 293.15);
    auto& burner = dynamic_cast<FlashDrum&>(sheet.child("D"));
    burner.reactions[0]->z = 0.5;
    return burner;
}

double enthalpyFlow(Object& sheet, const std::string& tag) {
    auto& total = dynamic_cast<Phase::MassMolarProperties&>(*dynamic_cast<Stream&>(sheet.at(tag)).Tphase);
    return (total.mdot * total.h).toDouble();
}
} // namespace

// Biogas burnt in part with air in a drum whose duty is given: the drum's unknowns, the flue gas's flash,
// join those of the flowsheet, and the simultaneous solve finds the state that a sequential one finds.
TEST_F(FlowsheetTest, DrumWithGivenDutyConvergesSimultaneouslyAsSequentially) {
    std::unique_ptr<FlowSheet> sheets[2];
    for (auto& sheet : sheets) {
        sheet = bare();
        FlashDrum& drum = addBurner(*sheet, Defaults("D", "burner").setString("option", "PH"));
        sheet->addStream("StreamIdealLiquidVapor", {"FLUE", "flue gas"}, "D", "out", "sink", "in");
        drum.P = Value(1e5, "Pa");
        drum.duty = Value(1e6, "W"); // about three quarters of the heat set free
        sheet->initializeNonPersistents();
    }
    sheets[0]->go(Calculatable::sequential, 0);
    sheets[1]->calculate(0); // sequentially first, then simultaneously
    // A new duty: the simultaneous solve starts from the state of the old one.
    for (auto& sheet : sheets)
        dynamic_cast<FlashDrum&>(sheet->child("D")).duty = Value(0.8e6, "W");
    sheets[0]->go(Calculatable::sequential, 0);
    sheets[1]->go(Calculatable::simultaneous, 0);
    EXPECT_GT(sheets[1]->NITER.value(), 0);
    for (auto& sheet : sheets) {
        EXPECT_TRUE(sheet->errorList().empty());
        auto& drum = dynamic_cast<FlashDrum&>(sheet->child("D"));
        EXPECT_TRUE(drum.errorList().empty());
        // The duty is what the enthalpy flows give up.
        EXPECT_NEAR(enthalpyFlow(*sheet, "GAS") + enthalpyFlow(*sheet, "AIR") - enthalpyFlow(*sheet, "FLUE"),
                    0.8e6, 1e-9 * 0.8e6);
        EXPECT_GT(drum.T.toDouble(), 400.0);
    }
    const auto T = [](FlowSheet& sheet) { return dynamic_cast<Stream&>(sheet.child("FLUE")).T.toDouble(); };
    EXPECT_NEAR(T(*sheets[1]), T(*sheets[0]), 1e-8);
}

// A burner and a condenser behind it, stored before their first calculation: retrieved, the drum finds its
// reaction and the degasser its inner stream, and the case calculates as it does in memory.
TEST_F(FlowsheetTest, StoredDrumsCalculateAsInMemory) {
    TemporaryDatabase database;
    PersistencyPostgres store(database.connection());
    const auto build = [this] {
        auto sheet = bare();
        FlashDrum& drum = addBurner(*sheet, Defaults("D", "burner"));
        sheet->addUnit("FlashDegasser<StreamIdealLiquidVapor>", Defaults("COND", "condenser"));
        sheet->addStream("StreamVapor", {"FLUE", "flue gas"}, "D", "out", "COND", "in");
        sheet->addStream("StreamVapor", {"DRY", "dry flue gas"}, "COND", "vapor", "sink", "in");
        sheet->addStream("StreamLiquid", {"WATER", "condensate"}, "COND", "condensate", "sink", "in");
        drum.T = Value(800.0, "K");
        drum.P = Value(1.1e5, "Pa");
        auto& condenser = dynamic_cast<FlashDrum&>(sheet->child("COND"));
        condenser.T = Value(303.15, "K");
        condenser.P = Value(1e5, "Pa");
        return sheet;
    };
    auto memory = build();
    const int id = build()->insert(&store);
    memory->initializeNonPersistents();
    memory->go(Calculatable::sequential, 0);
    ASSERT_TRUE(memory->errorList().empty());

    std::unique_ptr<Node> node(
        NodeFactory::create("TestBare", Defaults(), static_cast<uint32_t>(id), &store, nullptr, nullptr));
    auto& stored = dynamic_cast<FlowSheet&>(*node);
    stored.initializeNonPersistents();
    stored.go(Calculatable::sequential, 0);
    EXPECT_TRUE(stored.errorList().empty());
    for (const char* stream : {"FLUE", "DRY", "WATER"})
        for (int i = 0; i < NCOMPONENTS; ++i)
            EXPECT_DOUBLE_EQ(flow(stored, stream, i), flow(*memory, stream, i)) << stream << " " << i;
    EXPECT_GT(flow(stored, "WATER", 2), 0.0);
    const Reaction& burning = *dynamic_cast<FlashDrum&>(stored.child("D")).reactions[0];
    EXPECT_EQ(burning.type(), "ReactionOxidationCH4");
    EXPECT_DOUBLE_EQ(burning.conv.toDouble(), 0.5 * 0.55 * 0.01);
    EXPECT_EQ(stored.S("COND.embeddedTypeStream"), "StreamIdealLiquidVapor");
}

// The shift at equilibrium in a drum at a given temperature: its extent joins the unknowns of the
// flowsheet, and after a change of temperature the simultaneous solve finds the equilibrium that a
// sequential one finds.
TEST_F(FlowsheetTest, EquilibriumDrumConvergesSimultaneouslyAsSequentially) {
    components.add(newCatalogueComponent("CO", "CO"));
    components.add(newCatalogueComponent("H2", "H2"));
    const int CO = components.lookup("CO"), H2 = components.lookup("H2");
    std::unique_ptr<FlowSheet> sheets[2];
    for (auto& sheet : sheets) {
        sheet = bare();
        sheet->addUnit("FlashDrum", Defaults("D", "shift")
                                        .setInteger("nReactions", 1)
                                        .setString("embeddedTypeReactions[0]", "ReactionWaterGasShiftEquilibrium"));
        sheet->addStream("StreamVapor", {"GAS", "syngas"}, "source", "out", "D", "in");
        sheet->addStream("StreamVapor", {"OUT", "shifted gas"}, "D", "out", "sink", "in");
        setMoleFractions(dynamic_cast<Stream&>(sheet->child("GAS")), 10.0, {{0, 0.4}, {H2, 0.4}, {3, 0.2}}, 1e5,
                         900);
        auto& drum = dynamic_cast<FlashDrum&>(sheet->child("D"));
        drum.T = Value(900.0, "K");
        drum.P = Value(1e5, "Pa");
        sheet->initializeNonPersistents();
    }
    sheets[0]->go(Calculatable::sequential, 0);
    sheets[1]->calculate(0);
    for (auto& sheet : sheets)
        dynamic_cast<FlashDrum&>(sheet->child("D")).T = Value(1150.0, "K");
    sheets[0]->go(Calculatable::sequential, 0);
    sheets[1]->go(Calculatable::simultaneous, 0);
    EXPECT_GT(sheets[1]->NITER.value(), 0);
    const auto moles = [](FlowSheet& sheet, int i) {
        return dynamic_cast<Stream&>(sheet.child("OUT")).Tphase->flow(i).toDouble("kmol/s");
    };
    for (auto& sheet : sheets)
        EXPECT_TRUE(sheet->errorList().empty() &&
                    dynamic_cast<FlashDrum&>(sheet->child("D")).errorList().empty());
    // Beyond the extent of 1 kmol/s that holds before the feeds are known.
    EXPECT_GT(moles(*sheets[0], CO), 1.0);
    EXPECT_NEAR(moles(*sheets[1], CO), moles(*sheets[0], CO), 1e-8);
}
