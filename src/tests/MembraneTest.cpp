#include "RunTarvo.h"
#include "TemporaryDatabase.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/core/Model.h>
#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/models/ModelCollection.h>
#include <tarvo/models/Test.h>
#include <tarvo/persistency/Configuration.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/streams/Stream.h>
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

// ---- two feeds ---------------------------------------------------------------------------------------

namespace {

// The streams around one module of a bed with two feeds: what enters on the retentate and the permeate side,
// and what leaves on each, as paths from the bed.
struct Ports {
    std::string module, retentateIn, permeateIn, retentateOut, permeateOut;
};

// The modules of a bed: GM itself, or the stages of a staged GM, co-current or counter-current.
std::vector<Ports> modulesOf(Model& bed) {
    Node& gm = bed.child("GM");
    if (!gm.hasChild("GM1")) return {{"GM", "FEED", "PERMEATESWEEP", "RETENTATE", "PERMEATE"}};
    const bool counter = gm.type().find("Counterflow") != std::string::npos;
    int n = 0;
    while (gm.hasChild("GM" + std::to_string(n + 1))) ++n;
    std::vector<Ports> stages;
    for (int k = 1; k <= n; ++k) {
        const std::string s = std::to_string(k), in = "GM:";
        const std::string permeateIn =
            counter ? (k == n ? "PERMEATESWEEP" : "PERMEATE" + std::to_string(k + 1) + "bis")
                    : (k == 1 ? "PERMEATESWEEP" : "PERMEATE" + std::to_string(k - 1));
        stages.push_back({"GM:GM" + s, in + (k == 1 ? "FEED" : "RETENTATE" + std::to_string(k - 1)), in + permeateIn,
                          in + "RETENTATE" + s, in + "PERMEATE" + s});
    }
    return stages;
}

// The share of each component that the transfer of the module at `path` ("GM", "GM:GM3") sends to the
// permeate side.
double theta(Node& bed, const std::string& path, int i) {
    Node* node = &bed;
    for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 1) {
        end = path.find(':', at);
        node = &node->child(path.substr(at, end - at));
    }
    return dynamic_cast<Object&>(node->child("multiReactions[0]")).Q("theta", i).toDouble();
}

// Checks each module of the bed against its equations, worked out here from its inlets and items: the
// pressure ratio, the permeation factors, the share theta of each component that leaves on the permeate side
// (at the inlet compositions, or at the mean of inlet and outlet with the estimated stage cut), and the
// balances. Returns the largest relative difference of a permeate flow.
double expectModuleEquations(Model& bed, bool linear) {
    double worst = 0;
    for (const Ports& p : modulesOf(bed)) {
        SCOPED_TRACE(p.module);
        const auto flow = [&](const std::string& s, int i) { return bed.Q(s + ":Tphase.ndotcomps", i).toDouble(); };
        const auto total = [&](const std::string& s) { return bed.Q(s + ":Tphase.ndot").toDouble(); };
        const double n0 = total(p.retentateIn), n1 = total(p.permeateIn), N = n0 + n1;
        const double pr = bed.Q(p.retentateIn + ".P").toDouble() - bed.Q(p.module + ".deltaPretentate").toDouble() / 2;
        const double pp = bed.Q(p.permeateIn + ".P").toDouble() - bed.Q(p.module + ".deltaPpermeate").toDouble() / 2;
        const double delta = pr / pp, area = bed.Q(p.module + ".A").toDouble();
        const double c = linear ? bed.Q(p.module + ".stageCutEst").toDouble() : 0;
        double cut = 0;
        for (int i = 0; i < NCOMPONENTS; ++i) {
            const double a = flow(p.retentateIn, i), b = flow(p.permeateIn, i), l = (a + b) / N;
            const double x0 = n0 > 0 ? a / n0 : 0, x1 = n1 > 0 ? b / n1 : 0;
            const double f = bed.Q(p.module + ".permeance", i).toDouble() * area * pp / N;
            double theta = 0.5;
            if (a + b > 0 && linear)
                theta = (l + (1 - c) * x0 - (1 - c) * x1 / delta + 2 * b * (1 - c) / (N * f * delta)) /
                        (l * (1 + (1 - c) / delta * (2 / f + 1 / c)));
            else if (a + b > 0)
                theta = (b + N * f * (delta * x0 - x1)) / (a + b);
            EXPECT_NEAR(::theta(bed, p.module, i), theta, 1e-12 * theta);
            cut += l * theta;
            const double permeated = flow(p.permeateOut, i), kept = flow(p.retentateOut, i);
            EXPECT_NEAR(permeated, theta * (a + b), 1e-12 * N) << components[i]->name;
            EXPECT_NEAR(permeated + kept, a + b, 1e-12 * (a + b)) << components[i]->name;
            if (a + b > 0) worst = std::max(worst, std::fabs(permeated / (theta * (a + b)) - 1));
        }
        EXPECT_NEAR(bed.Q(p.module + ".stageCut").toDouble(), cut, 1e-12);
        if (linear) {
            EXPECT_NEAR(c, cut, 1e-8); // the estimate converged to the cut
        }
    }
    return worst;
}

const char* const twoFeedBeds[] = {"Test2<Membrane22Rtsc>",
                                   "Test2<Membrane22Linear>",
                                   "Test2<MembraneMulti22RtscCoflow>",
                                   "Test2<MembraneMulti22RtscCounterflow>",
                                   "Test2<MembraneMulti22LinearCoflow>",
                                   "Test2<MembraneMulti22LinearCounterflow>"};

bool isLinear(const std::string& type) {
    return type.find("Linear") != std::string::npos;
}

} // namespace

// `new` of the type, then `calculate` of the case, in processes of their own; returns the case's id.
std::string newAndCalculate(const std::string& configuration, const std::string& type, const std::string& options = "") {
    const std::string folder = std::filesystem::current_path().string();
    const auto run = [&](const std::vector<std::string>& words) {
        return runProgram(TARVO_FIXTURE_EXECUTABLE, words, folder, {{"TARVO_TEST_CONFIGURATION", configuration}});
    };
    const TarvoRun created = run({"new", type, "bed", "", options});
    EXPECT_EQ(created.exitCode, 0) << created.err;
    const std::string id = created.idTxt.substr(0, created.idTxt.find('\n'));
    const TarvoRun calculated = run({"calculate", id});
    EXPECT_EQ(calculated.exitCode, 0) << calculated.err;
    EXPECT_NE(calculated.out.find("Computation complete with 0 errors and 0 warnings"), std::string::npos)
        << calculated.out;
    return id;
}

// As a user runs them: `new` and `calculate` of each bed, read back from the store, satisfy the equations of
// every module, with no error in the case.
TEST_F(MembraneTest, BedsWithTwoFeedsStoreResultsThatSatisfyTheModuleEquations) {
    TemporaryDatabase database;
    const std::string configuration = (folder_ / "TARVO.conf").string();
    database.writeConfiguration(configuration);
    Configuration::useKernelFile(configuration);
    for (const std::string type : twoFeedBeds) {
        SCOPED_TRACE(type);
        const std::string id = newAndCalculate(configuration, type);
        const Tarvo::User::Case stored{Tarvo::User::Handle(std::stoi(id))};
        ASSERT_NE(stored.model(), nullptr);
        Model& bed = *stored.model();
        expectModuleEquations(bed, isLinear(type));
        // Over the bed: what enters on both sides leaves in the two products, and the recovery says how much
        // of it stays on the retentate side.
        for (int i = 0; i < NCOMPONENTS; ++i) {
            const double in = bed.Q("FEED:Tphase.ndotcomps", i).toDouble() +
                              bed.Q("PERMEATESWEEP:Tphase.ndotcomps", i).toDouble();
            const double kept = bed.Q("RETENTATE:Tphase.ndotcomps", i).toDouble();
            EXPECT_NEAR(kept + bed.Q("PERMEATE:Tphase.ndotcomps", i).toDouble(), in, 1e-12 * in);
            EXPECT_NEAR(bed.Q("recovery", i).toDouble(), kept / in, 1e-12);
        }
    }
}

// One stage of a co-current chain is the single module.
TEST_F(MembraneTest, OneCoCurrentStageIsTheSingleModuleWithTwoFeeds) {
    const std::pair<const char*, const char*> pairs[] = {
        {"Test2<Membrane22Rtsc>", "Test2<MembraneMulti22RtscCoflow>"},
        {"Test2<Membrane22Linear>", "Test2<MembraneMulti22LinearCoflow>"}};
    for (const auto& [single, staged] : pairs) {
        SCOPED_TRACE(staged);
        auto one = calculated(single);
        auto chain = calculated(staged, Tarvo::Persistency::Defaults("T1", "test bed").setInteger("stages", 1));
        ASSERT_TRUE(one && chain);
        EXPECT_TRUE(chain->errorList().empty() && one->errorList().empty());
        EXPECT_FALSE(chain->child("GM").hasChild("GM2"));
        for (int i = 0; i < NCOMPONENTS; ++i) {
            EXPECT_NEAR(chain->Q("recovery", i).toDouble(), one->Q("recovery", i).toDouble(), 1e-9);
            EXPECT_NEAR(chain->Q("GM.outSplit", i).toDouble(), 1 - one->Q("recovery", i).toDouble(), 1e-9);
        }
        EXPECT_NEAR(chain->Q("GM.stageCut").toDouble(),
                    one->Q("PERMEATE:Tphase.ndot").toDouble() /
                        (one->Q("FEED:Tphase.ndot").toDouble() + one->Q("PERMEATESWEEP:Tphase.ndot").toDouble()),
                    1e-9);
    }
}

// A component that enters on neither side gets theta 0.5 and moves nothing. A sweep without flow leaves the
// permeate side with the flux alone, a feed without flow only the sweep's carbon dioxide to share; neither
// leaves a NaN.
TEST_F(MembraneTest, TwoFeedModulesWithMissingComponentsOrFlows) {
    for (const std::string type : {"Test2<Membrane22Rtsc>", "Test2<Membrane22Linear>"}) {
        SCOPED_TRACE(type);
        std::unique_ptr<Model> bed(
            dynamic_cast<Model*>(NodeFactory::create(type, {"T1", ""}, 0, nullptr, nullptr, nullptr)));
        bed->setup();
        bed->Q("FEED:Tphase.x", 3) = Value(0.0); // no N2
        bed->Q("FEED:Tphase.x", 1) = Value(0.601);
        bed->initializeNonPersistents();
        bed->calculate(0);
        EXPECT_TRUE(bed->errorList().empty()) << bed->errorList().front();
        EXPECT_EQ(theta(*bed, "GM", 3), 0.5);
        EXPECT_EQ(bed->Q("PERMEATE:Tphase.ndotcomps", 3).toDouble(), 0.0);
        expectModuleEquations(*bed, isLinear(type));

        for (const char* empty : {"PERMEATESWEEP", "FEED"}) {
            SCOPED_TRACE(empty);
            bed.reset(dynamic_cast<Model*>(NodeFactory::create(type, {"T1", ""}, 0, nullptr, nullptr, nullptr)));
            bed->setup();
            bed->Q(std::string(empty) + ":Tphase.ndot") = Value(0.0, "kmol/s");
            bed->initializeNonPersistents();
            bed->calculate(0);
            for (const char* q : {"GM.stageCut", "GM.Ts", "PERMEATE.T", "RETENTATE.T", "PERMEATE:Tphase.ndot"})
                EXPECT_FALSE(std::isnan(bed->Q(q).toDouble())) << q;
            EXPECT_TRUE(bed->errorList().empty()) << bed->errorList().front();
            expectModuleEquations(*bed, isLinear(type));
        }
    }
}

// A counter-current chain of 10 stages names its cuts itself, so that the case read back from the store has
// them: calculated again from there, it ends where it was, and where the same chain calculated in memory from
// the start ends. With its permeate loops torn open again, the simultaneous solve alone closes them at the
// same result.
TEST_F(MembraneTest, ACounterCurrentChainEndsAtOneResultFromANewAndAStoredCase) {
    TemporaryDatabase database;
    const std::string configuration = (folder_ / "TARVO.conf").string();
    database.writeConfiguration(configuration);
    Configuration::useKernelFile(configuration);
    for (const std::string type : {"Test2<MembraneMulti22RtscCounterflow>", "Test2<MembraneMulti22LinearCounterflow>"}) {
        SCOPED_TRACE(type);
        const std::string id = newAndCalculate(configuration, type);
        const auto results = [&] {
            const Tarvo::User::Case stored{Tarvo::User::Handle(std::stoi(id))};
            std::vector<double> r{stored.model()->Q("GM.stageCut").toDouble()};
            for (int i = 0; i < NCOMPONENTS; ++i) r.push_back(stored.model()->Q("recovery", i).toDouble());
            for (int k = 2; k <= 10; ++k)
                EXPECT_TRUE(stored.model()->child("GM").hasChild("PERMEATE" + std::to_string(k) + "bis")) << k;
            return r;
        };
        const std::vector<double> first = results();
        const TarvoRun again = runProgram(TARVO_FIXTURE_EXECUTABLE, {"calculate", id}, folder_.string(),
                                          {{"TARVO_TEST_CONFIGURATION", configuration}});
        EXPECT_EQ(again.exitCode, 0) << again.err;
        EXPECT_NE(again.out.find("Computation complete with 0 errors and 0 warnings"), std::string::npos) << again.out;
        const std::vector<double> second = results();
        auto fresh = calculated(type);
        ASSERT_TRUE(fresh);
        EXPECT_TRUE(fresh->errorList().empty());
        std::vector<double> inMemory{fresh->Q("GM.stageCut").toDouble()};
        for (int i = 0; i < NCOMPONENTS; ++i) inMemory.push_back(fresh->Q("recovery", i).toDouble());
        for (std::size_t k = 0; k < first.size(); ++k) {
            EXPECT_NEAR(second[k], first[k], 1e-8 * first[k]) << k;
            EXPECT_NEAR(inMemory[k], first[k], 1e-8 * first[k]) << k;
        }
        expectModuleEquations(*fresh, isLinear(type));

        auto& sheet = dynamic_cast<FlowSheet&>(*fresh);
        for (int k = 2; k <= 10; ++k) {
            auto& tear = dynamic_cast<Stream&>(sheet.child("GM").child("PERMEATE" + std::to_string(k) + "bis"));
            for (int i = 0; i < NCOMPONENTS; ++i) tear.Tphase->flow(i) *= 1.2;
        }
        sheet.go(Calculatable::simultaneous, 0);
        EXPECT_TRUE(sheet.errorList().empty()) << sheet.errorList().front();
        EXPECT_GT(sheet.NITER.value(), 1);
        EXPECT_NEAR(sheet.Q("GM.stageCut").toDouble(), first[0], 1e-8 * first[0]);
        for (int i = 0; i < NCOMPONENTS; ++i)
            EXPECT_NEAR(sheet.Q("recovery", i).toDouble(), first[1 + i], 1e-8 * first[1 + i]) << i;
        expectModuleEquations(*fresh, isLinear(type));
    }
}
