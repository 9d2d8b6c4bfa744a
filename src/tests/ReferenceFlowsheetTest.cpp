// The reference flowsheets as a user runs them: `new` and `calculate` of every type and alias in processes
// of their own, `calculate` again from the stored case, and the stored results checked against balances
// and module equations worked out here.
#include "PlantChecks.h"
#include "RunTarvo.h"
#include "StoredCases.h"
#include "TemporaryDatabase.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/models/ModelCollection.h>
#include <tarvo/persistency/Configuration.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/user/Case.h>
#include <tarvo/user/Kernel.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int CO2 = 0, CH4 = 1;

// The engine burns methane: CH4 + 2 O2 -> CO2 + 2 H2O, by component index (CO2, CH4, H2O, N2, O2).
const std::vector<double> combustion = {1, -1, 2, 0, -2};

// A reference flowsheet and the warnings that its physics makes, each with its count.
struct Plant {
    std::string type;
    // Condensate outlets of compressor trains that a dry gas leaves empty ("zero material flow").
    int emptyCondensates;
    // Stages of a counter-current chain whose flux at the inlet compositions would take more carbon dioxide
    // out of the retentate than it holds: the transfer is bounded ("Conversion too high").
    int boundedStages;
};

// The flue gas of the capture plants holds no water: each stage of a train and the train's own mixed outlet
// stay empty. Of the biogas plants, Deng's feed is dry, Makaruk's too; Upgrading's biogas holds water that
// the train condenses. The counts of bounded stages are those of these set-ups.
const std::vector<Plant> plants = {
    {"Test", 0, 0},
    {"Test<Membrane12Rtsc>", 0, 0},
    {"Test<Membrane12Cstr>", 0, 0},
    {"Test<MembraneMulti12<Membrane12Rtsc>>", 0, 0},
    {"Test<MembraneMulti12<Membrane12Cstr>>", 0, 0},
    {"Test2", 0, 0},
    {"Test2<Membrane22Rtsc>", 0, 0},
    {"Test2<Membrane22Linear>", 0, 0},
    {"Test2<MembraneMulti22RtscCoflow>", 0, 0},
    {"Test2<MembraneMulti22RtscCounterflow>", 0, 0},
    {"Test2<MembraneMulti22LinearCoflow>", 0, 0},
    {"Test2<MembraneMulti22LinearCounterflow>", 0, 0},
    {"Merkel2010Fig7a", 4, 0},
    {"Merkel2010Fig7aCounterflow", 4, 1},
    {"Merkel2010Fig7aLinearCounterflow", 4, 1},
    {"Merkel2010Fig7b", 8, 2},
    {"Merkel2010Fig7bLinearCounterflow", 8, 0},
    {"Merkel2010Fig11", 4, 0},
    {"Deng2010Fig6b", 8, 0},
    {"Makaruk2010Fig2", 3, 0},
    {"Makaruk2010Fig2FreeFlowRtsc", 3, 0},
    {"Makaruk2010Fig2FreeFlowCstr", 3, 0},
    {"Benchmark", 0, 0},
    {"Upgrading", 0, 0},
};

class ReferenceFlowsheetTest : public ::testing::Test {
protected:
    void SetUp() override {
        database_.writeConfiguration(configuration_);
        Configuration::useKernelFile(configuration_);
        Tarvo::User::setModelCollection(&Tarvo::Models::registerModelCollection);
        Tarvo::User::registerKernelTypes();
    }

    TarvoRun run(const std::vector<std::string>& words) const {
        return runProgram(TARVO_FIXTURE_EXECUTABLE, words, folder_.path(),
                          {{"TARVO_TEST_CONFIGURATION", configuration_}});
    }

    // `new` of the type; the id of the case.
    int created(const std::string& type, const std::string& options = "") const {
        const TarvoRun made = run({"new", type, "plant", "", options});
        EXPECT_EQ(made.exitCode, 0) << made.err;
        return std::atoi(made.idTxt.c_str());
    }

    // `calculate` of the case; the count of warnings that it reported, -1 without the closing line.
    int calculated(int id) const {
        const TarvoRun done = run({"calculate", std::to_string(id)});
        EXPECT_EQ(done.exitCode, 0) << done.err;
        const std::string closing = "Computation complete with 0 errors and ";
        const std::size_t at = done.out.find(closing);
        EXPECT_NE(at, std::string::npos) << done.out << done.err;
        return at == std::string::npos ? -1 : std::atoi(done.out.c_str() + at + closing.size());
    }

    TemporaryFolder folder_;
    TemporaryDatabase database_;
    const std::string configuration_ = folder_.path() + "/TARVO.conf";
};

} // namespace

// Each plant and test bed calculates from a new case and again from its stored one without an error; read
// back, it closes its balances, every membrane module in it satisfies its equations, and its power is that of
// its machines.
TEST_F(ReferenceFlowsheetTest, EveryPlantCalculatesAndClosesItsBalances) {
    for (const Plant& plant : plants) {
        SCOPED_TRACE(plant.type);
        const int id = created(plant.type);
        const int warnings = calculated(id);
        EXPECT_EQ(warnings, plant.emptyCondensates + plant.boundedStages);
        EXPECT_EQ(calculated(id), warnings); // from the stored case
        const Tarvo::User::Case stored{Tarvo::User::Handle(id)};
        ASSERT_NE(stored.model(), nullptr);
        Model& sheet = *stored.model();
        EXPECT_TRUE(sheet.errorList().empty());
        const bool engine = plant.type == "Benchmark" || plant.type == "Upgrading";
        expectPlantBalances(sheet, 1e-9, 1e-6, engine ? combustion : std::vector<double>{});
        if (plant.type != "Benchmark") {
            EXPECT_GE(expectModuleEquations(sheet, 1e-5), 1);
        }
        const double machines = compressorPower(sheet);
        if (plant.type == "Benchmark") {
            // 802310 kJ/kmol, the methane heating value of the plants.
            EXPECT_EQ(sheet.Q("LHVin").toDouble(), 802310e3 * sheet.Q("BiogasClean:Tphase.ndotcomps", CH4).toDouble());
            EXPECT_NEAR(sheet.Q("etaL").toDouble(), sheet.Q("ICE.We").toDouble() / sheet.Q("LHVin").toDouble(), 1e-15);
        } else if (plant.type == "Upgrading") {
            EXPECT_EQ(sheet.Q("LHVin").toDouble(), 802310e3 * sheet.Q("BiogasClean:Tphase.ndotcomps", CH4).toDouble());
            EXPECT_NEAR(sheet.Q("powerConsumption").toDouble(), machines, 1e-12 * machines);
            // The product leaves at the wanted pressure: the compressor's discharge followed it.
            EXPECT_NEAR(sheet.Q("RETEB.P").toDouble(), 25e5, 1e-3);
        } else if (sheet.hasQ("power")) {
            EXPECT_NEAR(sheet.Q("power").toDouble(), machines, 1e-12 * machines);
        }
    }
}

// The edge cases: the two ways of naming a test bed build one tree; the plants open the recycles that they
// have and no other; the plant with the engine sends the share of biogas of its own input to the engine, not
// the divider's split of the set-up; a component without feed gets the recovery that the division of values
// gives.
TEST_F(ReferenceFlowsheetTest, NamesCutsSplitAndMissingComponents) {
    const int alias = created("Test<MembraneMulti12<Membrane12Rtsc>>");
    const int option = created("Test", R"({"stringOptions":{"typeT":"MembraneMulti12<Membrane12Rtsc>"}})");
    const std::string tree = caseContents(database_, alias);
    EXPECT_NE(tree.find("GM10"), std::string::npos);
    EXPECT_EQ(caseContents(database_, option), tree);

    const auto made = [](const std::string& type) {
        std::unique_ptr<Model> model(
            dynamic_cast<Model*>(NodeFactory::create(type, {"plant", ""}, 0, nullptr, nullptr, nullptr)));
        model->setup();
        model->initializeNonPersistents();
        return model;
    };
    // The sweep of the counter-current capture plant comes from outside; the other two recycle.
    EXPECT_EQ(cutsOf(*made("Merkel2010Fig7aCounterflow")), 0);
    EXPECT_EQ(cutsOf(*made("Merkel2010Fig7b")), 1);
    EXPECT_EQ(cutsOf(*made("Merkel2010Fig11")), 2);

    auto upgrading = made("Upgrading");
    EXPECT_EQ(upgrading->Q("TEE.outSplit", 0).toDouble(), 0.5);
    upgrading->calculate(0);
    EXPECT_TRUE(upgrading->errorList().empty());
    EXPECT_EQ(upgrading->Q("TEE.outSplit", 0).toDouble(), 0.2); // splitToIce
    EXPECT_NEAR(upgrading->Q("BiogasCleanICE:Tphase.ndot").toDouble(),
                0.2 * upgrading->Q("BiogasClean:Tphase.ndot").toDouble(), 1e-15);

    // The flue gas of the capture plant holds no methane: 0 over 0.
    auto capture = made("Merkel2010Fig7a");
    capture->calculate(0);
    EXPECT_TRUE(capture->errorList().empty());
    EXPECT_EQ(capture->Q("FEED:Tphase.ndotcomps", CH4).toDouble(), 0.0);
    EXPECT_TRUE(std::isnan((Value(0.0) / Value(0.0)).toDouble()));
    EXPECT_TRUE(std::isnan(capture->Q("recovery", CH4).toDouble()));
    EXPECT_EQ(capture->Q("purity", CH4).toDouble(), 0.0);
    EXPECT_GT(capture->Q("recovery", CO2).toDouble(), 0.0);
}

// The catalogue lists the plants after the test beds and in their order, the engine among them as a unit,
// each alias after its base with the membrane that it fixes no longer offered.
TEST(ReferenceFlowsheetCatalogue, ListsThePlantsInTheirOrder) {
    TemporaryFolder folder;
    const TarvoRun types = runTarvo({"types"}, folder.path());
    ASSERT_EQ(types.exitCode, 0) << types.err;
    const std::string typeX = R"({"name":"typeX","description":"the type of the multi-stage membrane model","value":")";
    const std::string capture = "Post-combustion CO2 capture for power plants Figure ";
    const std::string cascade = "Biogas upgrading Figure2 of Makaruk2010 (two-step low-pressure-feed cascade)";
    // Name, description, the option offered as "default","enumerator" (empty: none).
    const std::vector<std::vector<std::string>> rows = {
        {"Test2<MembraneMulti22LinearCounterflow>", "", ""},
        {"Merkel2010Fig7a",
         capture + "7a of Merkel2010, with free-flow, multi-stage membrane model but without permeate sweep", ""},
        {"Merkel2010Fig7aCounterflow", capture + "7a of Merkel2010, counter-current, configurable",
         R"(MembraneMulti22LinearCounterflow","enumerator":"MembraneTypeCounterFlow"})"},
        {"Merkel2010Fig7aLinearCounterflow",
         capture + "7a of Merkel2010 with linear average, counter-current, multi-stage membrane model", ""},
        {"Merkel2010Fig7b", capture + "7b of Merkel2010, counter-current, configurable",
         R"(MembraneMulti22RtscCounterflow","enumerator":"MembraneTypeCounterFlow"})"},
        {"Merkel2010Fig7bLinearCounterflow",
         capture + "7b of Merkel2010 with linear average, counter-flow/sweep multi-stage membrane model", ""},
        {"Merkel2010Fig11",
         "Post-combustion CO2 capture for power plants Figure 11 Merkel2010 (three-step vacuum membrane process)", ""},
        {"Deng2010Fig6b", "Biogas upgrading Figure 6b of Deng2010 (two-step configuration without recycle)", ""},
        {"Makaruk2010Fig2", cascade + ", configurable",
         R"(MembraneMulti12<Membrane12Rtsc>","enumerator":"MembraneType1"})"},
        {"Makaruk2010Fig2FreeFlowRtsc", cascade + ", with free flow, multi-stage, RTSC membrane model", ""},
        {"Makaruk2010Fig2FreeFlowCstr", cascade + ", with free flow, multi-stage, CSTR membrane model", ""},
        {"ICE", "Internal Combustion Engine", ""},
        {"Benchmark", "Reference biogas plant with Internal Combustion Engine", ""},
        {"Upgrading", "Biogas plant with two-step upgrading", ""},
    };
    std::size_t previous = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row[0]);
        const std::size_t at = types.out.find("{\"name\":\"" + row[0] + "\", ");
        ASSERT_NE(at, std::string::npos);
        EXPECT_GT(at, previous);
        previous = at;
        if (row[1].empty()) continue; // the last test bed: the plants come after it
        const std::string record = types.out.substr(at, types.out.find(" }", at) - at);
        EXPECT_NE(record.find("\"description\":\"" + row[1] + "\""), std::string::npos) << record;
        const bool engine = row[0] == "ICE";
        EXPECT_NE(record.find(engine ? "\"category\":\"unit\"" : "\"category\":\"flowsheet\""), std::string::npos)
            << record;
        EXPECT_NE(record.find(engine ? "\"instantiable\":false" : "\"instantiable\":true"), std::string::npos)
            << record;
        EXPECT_EQ(record.find(row[2].empty() ? typeX : typeX + row[2]) != std::string::npos, !row[2].empty())
            << record;
    }
}
