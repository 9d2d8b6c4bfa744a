#include "RunTarvo.h"
#include "TemporaryDatabase.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/core/Model.h>
#include <tarvo/models/ModelCollection.h>
#include <tarvo/models/Test.h>
#include <tarvo/persistency/Configuration.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/user/Case.h>
#include <tarvo/user/Cases.h>
#include <tarvo/user/Kernel.h>
#include <tarvo/utility/Error.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

// The membrane test beds calculated in memory, against the module equations solved here on their own:
// per component the permeation factor f = Q A p / F and the share s that permeates, the stage cut theta
// the fixed point theta = sum z s(theta).

namespace {

// 1 GPU = 1e-6 cm3(STP) / (cm2 s cmHg), with 22.414 m3(STP) per kmol and 1333.22 Pa per cmHg. The kernel's
// unit table has a factor 6e-6 larger (another convention for the standard state), which bounds the
// agreement below.
const double gpu = 1e-6 * 1e-6 / 22.414 / 1e-4 / 1333.22;
// The test bed's module and feed.
const double permeance[] = {100 * gpu, 3.3333333333333335 * gpu, 150 * gpu, 2 * gpu, 1 * gpu};
const double feedX[] = {0.34, 0.6, 0.058, 0.001, 0.001}; // CO2, CH4, H2O, N2, O2
const double area = 20, pPermeate = 1.2e5, pFeed = 6.5e5, dpRetentate = 0.5e5, feedFlow = 0.001;

using Split = std::function<double(double f, double delta, double theta)>;
const Split rtsc = [](double f, double delta, double theta) { return delta / (1 / theta + 1 / f); };
const Split cstr = [](double f, double delta, double theta) {
    return 1 / (1 + (1 - theta) / delta * (1 / theta + 1 / f));
};

// The stage cut of `stages` modules in series on the retentate, each with its share of area and pressure drop,
// their permeates mixed; the component splits to the permeate in `split`.
double solveChain(const Split& s, int stages, std::vector<double>& split) {
    std::vector<double> flows(feedX, feedX + 5);
    for (double& n : flows) n *= feedFlow;
    std::vector<double> permeate(5, 0.0);
    double p = pFeed;
    for (int k = 0; k < stages; ++k) {
        double total = 0;
        for (double n : flows) total += n;
        const double dp = dpRetentate / stages;
        const double delta = (p - dp / 2) / pPermeate;
        auto cut = [&](double theta) {
            double sum = 0;
            for (int i = 0; i < 5; ++i) sum += flows[i] / total * s(permeance[i] * area / stages * pPermeate / total, delta, theta);
            return sum - theta;
        };
        double lo = 1e-12, hi = 1 - 1e-12; // cut(theta) - theta falls through zero once
        for (int it = 0; it < 200; ++it) ((cut(0.5 * (lo + hi)) > 0) ? lo : hi) = 0.5 * (lo + hi);
        const double theta = 0.5 * (lo + hi);
        for (int i = 0; i < 5; ++i) {
            const double si = s(permeance[i] * area / stages * pPermeate / total, delta, theta);
            permeate[i] += flows[i] * si;
            flows[i] *= 1 - si;
        }
        p -= dp;
    }
    double sumPermeate = 0;
    split.assign(5, 0.0);
    for (int i = 0; i < 5; ++i) {
        sumPermeate += permeate[i];
        split[i] = permeate[i] / (feedFlow * feedX[i]);
    }
    return sumPermeate / feedFlow;
}

class MembraneTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        Tarvo::User::setModelCollection(&Tarvo::Models::registerModelCollection);
        Tarvo::User::registerKernelTypes();
    }
    // A flowsheet writes its schedules into the working directory: a folder of the test's own.
    void SetUp() override {
        previous_ = std::filesystem::current_path();
        folder_ = std::filesystem::temp_directory_path() / ("tarvo-models-" + std::to_string(::getpid()));
        std::filesystem::create_directories(folder_);
        std::filesystem::current_path(folder_);
    }
    void TearDown() override {
        std::filesystem::current_path(previous_);
        std::filesystem::remove_all(folder_);
    }

    // A test bed as `new` makes it and `calculate` calculates it, without the store.
    static std::unique_ptr<Model> calculated(const std::string& type,
                                             const Tarvo::Persistency::Defaults& defaults = {"T1", "test bed"}) {
        std::unique_ptr<Model> model;
        try {
            model.reset(dynamic_cast<Model*>(NodeFactory::create(type, defaults, 0, nullptr, nullptr, nullptr)));
            model->setup();
            model->initializeNonPersistents();
            model->calculate(0);
            model->reportMessages();
        } catch (Error& e) {
            ADD_FAILURE() << e.message();
        }
        return model;
    }

    std::filesystem::path previous_, folder_;

    static void expectSplits(Model& m, double theta, const std::vector<double>& split, double tolerance) {
        EXPECT_TRUE(m.errorList().empty()) << m.errorList().front();
        const double feed = m.Q("FEED:Tphase.ndot").toDouble();
        EXPECT_NEAR(feed, feedFlow, 1e-15);
        EXPECT_NEAR(m.Q("PERMEATE:Tphase.ndot").toDouble() / feed, theta, tolerance * theta);
        for (int i = 0; i < NCOMPONENTS; ++i) {
            const double in = m.Q("FEED:Tphase.ndotcomps", i).toDouble();
            const double permeated = m.Q("PERMEATE:Tphase.ndotcomps", i).toDouble();
            EXPECT_NEAR(permeated / in, split[i], tolerance * split[i]) << components[i]->name;
            // Nothing is made or lost.
            EXPECT_NEAR(permeated + m.Q("RETENTATE:Tphase.ndotcomps", i).toDouble(), in, 1e-12 * feedFlow);
            EXPECT_NEAR(m.Q("recovery", i).toDouble(), 1 - split[i], tolerance);
        }
    }
};

} // namespace

TEST_F(MembraneTest, SingleModulesMatchTheirEquations) {
    for (const auto& [type, s] : {std::pair{"Test<Membrane12Rtsc>", rtsc}, std::pair{"Test<Membrane12Cstr>", cstr}}) {
        SCOPED_TRACE(type);
        std::vector<double> split;
        const double theta = solveChain(s, 1, split);
        auto m = calculated(type);
        ASSERT_TRUE(m);
        expectSplits(*m, theta, split, 2e-5);
        EXPECT_NEAR(m->Q("GM.stageCut").toDouble(), theta, 2e-5 * theta);
        // Both products leave at the feed temperature, the permeate at its compartment's pressure.
        EXPECT_NEAR(m->Q("PERMEATE.T").toDouble(), 333.15, 1e-9);
        EXPECT_NEAR(m->Q("RETENTATE.T").toDouble(), 333.15, 1e-9);
        EXPECT_NEAR(m->Q("PERMEATE.P").toDouble(), pPermeate, 1e-6);
        EXPECT_NEAR(m->Q("RETENTATE.P").toDouble(), pFeed - dpRetentate, 1e-6);
    }
}

TEST_F(MembraneTest, MultiStageModulesMatchAChainOfModules) {
    for (const auto& [type, s] : {std::pair{"Test<MembraneMulti12<Membrane12Rtsc>>", rtsc},
                                  std::pair{"Test<MembraneMulti12<Membrane12Cstr>>", cstr}}) {
        SCOPED_TRACE(type);
        std::vector<double> split;
        const double theta = solveChain(s, 10, split);
        auto m = calculated(type);
        ASSERT_TRUE(m);
        expectSplits(*m, theta, split, 2e-5);
    }
}

// One stage of a multi-stage module is the single module: same stage cut and splits to rounding.
TEST_F(MembraneTest, OneStageOfAMultiStageModuleIsTheSingleModule) {
    const std::pair<const char*, const char*> pairs[] = {
        {"Test<Membrane12Rtsc>", "Test<MembraneMulti12<Membrane12Rtsc>>"},
        {"Test<Membrane12Cstr>", "Test<MembraneMulti12<Membrane12Cstr>>"}};
    for (const auto& [single, multi] : pairs) {
        SCOPED_TRACE(multi);
        auto one = calculated(single);
        auto staged = calculated(multi, Tarvo::Persistency::Defaults("T1", "test bed").setInteger("stages", 1));
        ASSERT_TRUE(one && staged);
        EXPECT_FALSE(staged->child("GM").hasChild("GM2"));
        const double theta = one->Q("GM.stageCut").toDouble();
        EXPECT_NEAR(staged->Q("GM.stageCut").toDouble(), theta, 1e-9 * theta);
        for (int i = 0; i < NCOMPONENTS; ++i)
            EXPECT_NEAR(staged->Q("recovery", i).toDouble(), one->Q("recovery", i).toDouble(), 1e-9);
    }
}

// As a user runs it: `new` stores the test bed and draws it, `calculate` stores the results, and read back
// from the store they satisfy the module equations. A multi-stage module is drawn as well, inside its bed.
TEST_F(MembraneTest, CommandLineStoresResultsThatSatisfyTheModuleEquations) {
    TemporaryDatabase database;
    const std::string configuration = (folder_ / "TARVO.conf").string();
    database.writeConfiguration(configuration);
    const auto run = [&](const std::vector<std::string>& words) {
        return runProgram(TARVO_FIXTURE_EXECUTABLE, words, folder_.string(),
                          {{"TARVO_TEST_CONFIGURATION", configuration}});
    };
    const auto newAndCalculate = [&](const std::vector<std::string>& newWords) {
        const TarvoRun created = run(newWords);
        EXPECT_EQ(created.exitCode, 0) << created.err;
        const int id = std::atoi(created.idTxt.c_str());
        EXPECT_GE(id, 0) << created.idTxt << created.err;
        const TarvoRun calculated = run({"calculate", std::to_string(id)});
        EXPECT_EQ(calculated.exitCode, 0) << calculated.err;
        EXPECT_EQ(calculated.idTxt, std::to_string(id) + "\n") << calculated.err;
        return id;
    };
    const int single = newAndCalculate({"new", "Test<Membrane12Rtsc>"});
    const int multi = newAndCalculate(
        {"new", "Test<MembraneMulti12<Membrane12Rtsc>>", "M", "", R"({"integerOptions":{"stages":3}})"});

    Configuration::useKernelFile(configuration);
    const Tarvo::User::Case stored{Tarvo::User::Handle(single)};
    ASSERT_NE(stored.model(), nullptr);
    std::vector<double> split;
    const double theta = solveChain(rtsc, 1, split);
    expectSplits(*stored.model(), theta, split, 2e-5);
    EXPECT_NEAR(stored.model()->Q("GM.stageCut").toDouble(), theta, 2e-5 * theta);
    const Tarvo::User::Case staged{Tarvo::User::Handle(multi)};
    ASSERT_NE(staged.model(), nullptr);
    expectSplits(*staged.model(), solveChain(rtsc, 3, split), split, 2e-5);

    // The pictures that `new` left: the bed of one module, and the bed and the inside of the multi-stage one.
    const auto picture = [&](int id) {
        std::ifstream in(folder_ / (std::to_string(id) + ".svg"));
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    };
    const auto count = [](const std::string& text, const std::string& part) {
        std::size_t n = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
        return n;
    };
    const std::string bed = picture(single);
    EXPECT_EQ(count(bed, "<image "), 1u) << bed;
    EXPECT_EQ(count(bed, "<use xlink:href=\"#arrow\""), 3u) << bed;
    EXPECT_NE(bed.find(">GM</text>"), std::string::npos) << bed;
    const int inside = multi + static_cast<int>(staged.model()->child("GM").id() - staged.model()->id());
    const std::string stages = picture(inside);
    EXPECT_EQ(count(stages, "<image "), 4u) << stages; // three stages and the mixer of their permeates
    // The feed, two retentates between the stages, three permeates, and the two products.
    EXPECT_EQ(count(stages, "<use xlink:href=\"#arrow\""), 8u) << stages;
    // Well-formed, and what a browser shows of them is what they say.
    ASSERT_FALSE(program("xmllint").empty()) << "xmllint is not installed (scripts/setup.sh lists its package)";
    ASSERT_FALSE(program("chromium").empty()) << "chromium is not installed (scripts/setup.sh lists its package)";
    for (int id : {single, multi, inside}) {
        const std::string file = std::to_string(id) + ".svg";
        const TarvoRun lint = runProgram(program("xmllint"), {"--noout", file}, folder_.string());
        EXPECT_EQ(lint.exitCode, 0) << file << ": " << lint.err;
        const TarvoRun shown = browseHeadless("file://" + (folder_ / file).string(), folder_.string());
        EXPECT_EQ(shown.exitCode, 0) << file << ": " << shown.err;
        EXPECT_EQ(shown.err.find(":ERROR:CONSOLE"), std::string::npos) << shown.err;
        EXPECT_NE(shown.out.find(id == inside ? ">GM3</text>" : ">GM</text>"), std::string::npos) << shown.out;
    }
}

// A purity outside [0, 1] beyond rounding is an error of the model, named by its component.
TEST_F(MembraneTest, PuritiesOutsideTheUnitIntervalAreErrors) {
    auto m = calculated("Test<Membrane12Rtsc>");
    ASSERT_TRUE(m);
    auto& bed = dynamic_cast<::Test&>(*m);
    bed.resetErrors();
    checkPurity(bed, bed.purity);
    EXPECT_TRUE(bed.errorList().empty());
    bed.purity[0] = -1e-9;
    bed.purity[1] = 1 + 1e-9;
    bed.purity[2] = 1 + 1e-17; // rounding
    checkPurity(bed, bed.purity);
    EXPECT_EQ(bed.errorList(), (std::vector<std::string>{"negative purity for component " + components[0]->name,
                                                         "purity larger than one for component " + components[1]->name}));
}

// The quantities of the descriptor are set after the bed's own set-up, which assigns the feed and the module:
// the user's values win, on children of the case too. One that no state can have makes no case.
TEST_F(MembraneTest, QuantitiesGivenToNewWinOverTheSetUp) {
    TemporaryDatabase database;
    const std::string configuration = (folder_ / "TARVO.conf").string();
    database.writeConfiguration(configuration);
    Configuration::useKernelFile(configuration);
    int error = 0;
    const Tarvo::User::Handle handle = Tarvo::User::createCase(
        R"({"type":"Test<Membrane12Rtsc>","tag":"bed","quantities":{"FEED.T":350,"GM.A":30,"GM.Ppermeate":1.5e5}})",
        error);
    ASSERT_EQ(error, 0);
    const Tarvo::User::Case stored{handle};
    ASSERT_NE(stored.model(), nullptr);
    EXPECT_EQ(stored.model()->Q("FEED.T").toDouble(), 350.0); // the set-up assigns 333.15 K
    EXPECT_EQ(stored.model()->Q("GM.A").toDouble(), 30.0);    // and 20 m2
    EXPECT_EQ(stored.model()->Q("GM.Ppermeate").toDouble(), 1.5e5);
    EXPECT_TRUE(stored.model()->Q("FEED.T").input());

    testing::internal::CaptureStderr();
    const Tarvo::User::Handle cold =
        Tarvo::User::createCase(R"({"type":"Test<Membrane12Rtsc>","quantities":{"FEED.T":-5}})", error);
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(error, -92);
    EXPECT_FALSE(cold.valid());
    EXPECT_NE(err.find("quantity FEED.T: -5 K is not above 0 K"), std::string::npos) << err;
}

// A feed at 0 Pa, which the store may hold, is outside the range of every flash: the calculation ends with
// the range error of the feed instead of evaluating properties there.
TEST_F(MembraneTest, AFeedOutsideTheRangeIsAnErrorOfTheFeed) {
    std::unique_ptr<Model> bed(
        dynamic_cast<Model*>(NodeFactory::create("Test<Membrane12Rtsc>", {"T1", ""}, 0, nullptr, nullptr, nullptr)));
    bed->setup();
    bed->Q("FEED.P") = Value(0.0, "Pa");
    bed->initializeNonPersistents();
    bed->calculate(0);
    const auto& errors = dynamic_cast<Model&>(bed->child("FEED")).errorList();
    EXPECT_NE(std::find(errors.begin(), errors.end(), "pressure outside the range of 1e-05 Pa to 1e+10 Pa"),
              errors.end());
}
