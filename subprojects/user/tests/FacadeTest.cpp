#include "Farm.h"
#include "RunTarvo.h"
#include "TemporaryDatabase.h"

#include <tarvo/core/KernelStart.h>
#include <tarvo/persistency/Configuration.h>
#include <tarvo/user/Case.h>
#include <tarvo/user/Cases.h>
#include <tarvo/user/ResultCodes.h>

#include <gtest/gtest.h>
#include <json/json.h>

#include <filesystem>
#include <fstream>
#include <set>

using namespace Tarvo::User;

namespace {

// The facade in this process, on a database of its own through a configuration file of its own, in a
// working folder of its own for the pictures of new cases.
class Facade : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder_ = new TemporaryFolder;
        previous_ = std::filesystem::current_path();
        std::filesystem::current_path(folder_->path());
        database_ = new TemporaryDatabase;
        file_ = std::filesystem::temp_directory_path() / ("tarvo-facade-" + database_->name() + ".conf");
        database_->writeConfiguration(file_);
        Configuration::useKernelFile(file_);
        Tarvo::Core::startKernel();
        registerFarm();
    }
    static void TearDownTestSuite() {
        Tarvo::Core::stopKernel();
        std::filesystem::remove(file_);
        delete database_;
        std::filesystem::current_path(previous_);
        delete folder_;
    }
    static Handle newTank(const std::string& options = "") {
        int error = 1;
        Handle h = createCase("Tank", "T1", "A tank", options, error);
        EXPECT_EQ(error, 0);
        return h;
    }
    // The names of the files in the working folder.
    static std::set<std::string> workingFiles() {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(".")) names.insert(entry.path().filename());
        return names;
    }
    static TemporaryFolder* folder_;
    static std::filesystem::path previous_;
    static TemporaryDatabase* database_;
    static std::string file_;
};

TemporaryFolder* Facade::folder_ = nullptr;
std::filesystem::path Facade::previous_;
TemporaryDatabase* Facade::database_ = nullptr;
std::string Facade::file_;

} // namespace

TEST_F(Facade, HandlesOfNewCases) {
    const Handle h = newTank();
    EXPECT_TRUE(h.valid());
    EXPECT_EQ(h.type(), "Tank");
    const Handle read(h.id());
    EXPECT_EQ(read.uuid(), h.uuid());
    EXPECT_EQ(read.tag(), "T1");
    EXPECT_EQ(read.description(), "A tank");
    EXPECT_EQ(Handle(h.uuid()).id(), h.id());
    EXPECT_FALSE(Handle().valid());
    int error = 0;
    testing::internal::CaptureStderr();
    const Handle failed = createCase("Nope", "x", "", "", error);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(error, serverError);
    EXPECT_EQ(failed.id(), -1);
    EXPECT_FALSE(failed.valid());
}

TEST_F(Facade, ValuesByPathAndTheirErrors) {
    Case c(newTank(R"({"quantities":{"V":0.5}})"));
    ASSERT_TRUE(c.valid());
    EXPECT_EQ(c.calculateSync(), 0);
    int error = 1;
    EXPECT_EQ(c.get("m", error), 500.0);
    EXPECT_EQ(error, 0);
    EXPECT_EQ(c.get("m", "t", error), 0.5);
    EXPECT_EQ(c.getString("content", error), "water");
    EXPECT_EQ(c.getInteger("nCalculations", error), 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(c.get("nosuchtag", error), 0.0);
    EXPECT_EQ(error, caseServerError);
    EXPECT_EQ(c.setTag("2x"), caseServerError);
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_NE(err.find("non-existant tag nosuchtag"), std::string::npos);
    EXPECT_NE(err.find("Called from function: Tarvo::User::Case::get"), std::string::npos);
    EXPECT_EQ(c.getString("S01.nothing", error), "");
    EXPECT_EQ(c.setTag("T9"), 0);
    EXPECT_EQ(c.getString("content", error), "water");
}

// What runs while the results are written sees the model calculated and the store as it was, which shows the
// results once calculateSync returns. The work is for one calculateSync, and with the check flag, which changes the
// model after the update, it is not done. The command line makes its spreadsheet document there: the golden file
// of the reports holds what it writes.
TEST_F(Facade, WhileTheResultsAreStoredTheModelStandsCalculatedAndTheStoreAsBefore) {
    const Handle h = newTank(R"({"quantities":{"V":0.5}})");
    Case c(h);
    const std::string storedMass = "SELECT VALUE FROM Q WHERE NID = " + std::to_string(h.id()) + " AND TAG = 'm'";
    std::vector<std::string> storedDuring;
    double massDuring = 0;
    int error = 1;
    c.setWhileStoring([&] {
        storedDuring = database_->column(storedMass);
        massDuring = c.get("m", error);
    });
    EXPECT_EQ(c.calculateSync(), 0);
    EXPECT_EQ(massDuring, 500.0);
    EXPECT_EQ(storedDuring, std::vector<std::string>{"0"});
    EXPECT_EQ(database_->column(storedMass), std::vector<std::string>{"500"});

    int runs = 0;
    c.setWhileStoring([&] { ++runs; });
    EXPECT_EQ(c.calculateSync(), 0);
    EXPECT_EQ(c.calculateSync(), 0);
    EXPECT_EQ(runs, 1) << "the work is for the next calculateSync only";
    c.setCheck();
    c.setWhileStoring([&] { ++runs; });
    testing::internal::CaptureStdout();
    EXPECT_EQ(c.calculateSync(), 0);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(runs, 1);
}

TEST_F(Facade, ARemovedCaseIsAnUnknownOne) {
    const Handle h = newTank();
    EXPECT_EQ(remove(h), 0);
    testing::internal::CaptureStderr();
    Case gone{Handle(h.id())};
    testing::internal::GetCapturedStderr();
    EXPECT_FALSE(gone.valid());
    EXPECT_EQ(gone.calculateSync(), caseInvalid);
    EXPECT_EQ(gone.check(), caseInvalid);
    EXPECT_EQ(gone.exportTxt("x.txt"), caseInvalid);
    EXPECT_EQ(gone.exportJson("x.json"), caseInvalid);
    EXPECT_EQ(gone.exportXml("."), caseInvalid);
    EXPECT_EQ(gone.exportOds("content.xml"), caseInvalid);
    int error = 0;
    EXPECT_TRUE(gone.exportSvgs(".", false, error).empty());
    EXPECT_EQ(error, caseInvalid);
    EXPECT_EQ(gone.get("m", error), 0.0);
    EXPECT_EQ(error, caseInvalid);
}

TEST_F(Facade, DuplicateLeavesTheOriginalAndExportGivesAFileStore) {
    const Handle original = newTank(R"({"quantities":{"V":3}})");
    int error = 1;
    const Handle copy = duplicate(original, "copy", "Copy of the tank", error);
    ASSERT_EQ(error, 0);
    EXPECT_NE(copy.id(), original.id());
    EXPECT_EQ(copy.created(), 0.0);
    EXPECT_EQ(Handle(original.id()).tag(), "T1");
    Case c(copy);
    EXPECT_EQ(c.get("V", error), 3.0);
    EXPECT_NE(c.model()->uuid(), Case(original).model()->uuid());

    const auto file = std::filesystem::temp_directory_path() / ("tarvo-export-" + database_->name() + ".db");
    std::ofstream(file).close();
    EXPECT_EQ(c.exportDataBase(file), 0);
    EXPECT_GT(std::filesystem::file_size(file), 0u);
    std::filesystem::remove(file);
    testing::internal::CaptureStderr();
    EXPECT_EQ(c.exportDataBase("/nonexistent/x.db"), caseServerError);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("can't open db file /nonexistent/x.db"), std::string::npos);
}

TEST_F(Facade, JsonReportReadsBackWithAJsonParser) {
    int error = 1;
    Case farm(createCase("Farm<Tank>", "F1", "A small farm", "", error));
    ASSERT_EQ(error, 0);
    ASSERT_EQ(farm.calculateSync(), 0);
    const auto file = std::filesystem::temp_directory_path() / ("tarvo-report-" + database_->name() + ".json");
    ASSERT_EQ(farm.exportJson(file), 0);
    Json::Value root;
    std::string errors;
    std::ifstream in(file);
    ASSERT_TRUE(Json::parseFromStream(Json::CharReaderBuilder(), in, &root, &errors)) << errors;
    std::filesystem::remove(file);
    EXPECT_EQ(root["fullTag"].asString(), "F1");
    EXPECT_EQ(root["type"].asString(), "Farm<Tank>");
    EXPECT_EQ(root["id"].asInt(), 0);
    EXPECT_EQ(root["parent"].asInt(), 0); // a root is its own parent
    EXPECT_EQ(root["I"]["batches"].asString(), "1");
    const Json::Value& pump = root["children"]["Pump"];
    EXPECT_EQ(pump["children"]["Motor"]["parent"].asInt(), pump["id"].asInt());
    EXPECT_EQ(pump["children"]["Motor"]["Q"]["eta"].asString(), "0.8 "); // dimensionless: an empty unit
    EXPECT_EQ(root["children"]["Tank"]["Q"]["m"].asString(), "1500 kg");
    EXPECT_EQ(root["children"]["Water"]["QV"]["x"][1].asString(), "0.5 ");
    EXPECT_TRUE(root["SV"]["errors"].isArray());
    EXPECT_EQ(root["SV"]["errors"].size(), 0u);

    EXPECT_EQ(farm.exportJson("/nonexistent/farm.json"), caseServerError);
}

// A new case from JSON options draws the root and each flowsheet in it into the working folder, in the tiny
// profile with raster icons; exportSvgs draws the same objects, under the same names, from the store.
TEST_F(Facade, PicturesOfNewAndStoredCasesAreNamedByTheirIdentifiersInTheStore) {
    newTank(); // the farm's identifiers do not start at 0
    const std::set<std::string> before = workingFiles();
    int error = 1;
    const Handle farm = createCase("Farm<Tank>", "F1", "A small farm", "", error);
    ASSERT_EQ(error, 0);
    std::set<std::string> drawn;
    for (const std::string& name : workingFiles())
        if (!before.count(name)) drawn.insert(name);
    ASSERT_EQ(drawn.size(), 2u); // the farm and the tank, a flowsheet; not the pump or the water
    EXPECT_TRUE(drawn.count(std::to_string(farm.id()) + ".svg"));
    std::ifstream root(std::to_string(farm.id()) + ".svg");
    const std::string text{std::istreambuf_iterator<char>(root), std::istreambuf_iterator<char>()};
    EXPECT_NE(text.find("baseProfile=\"tiny\""), std::string::npos) << text;
    EXPECT_NE(text.find(".png\""), std::string::npos) << text;

    const std::string dir = folder_->path() + "/pictures";
    std::filesystem::create_directory(dir);
    const std::vector<std::string> names = Case(farm).exportSvgs(dir, false, error);
    EXPECT_EQ(error, 0);
    std::set<std::string> exported;
    for (const std::string& name : names) exported.insert(std::filesystem::path(name).filename());
    EXPECT_EQ(exported, drawn);
    EXPECT_EQ(names.front(), dir + "/" + std::to_string(farm.id()) + ".svg");

    // Options as maps draw nothing; a folder that is not there fails the export.
    const std::set<std::string> now = workingFiles();
    createCase("Farm<Tank>", "F2", "", {}, {}, error);
    EXPECT_EQ(error, 0);
    EXPECT_EQ(workingFiles(), now);
    testing::internal::CaptureStderr();
    EXPECT_TRUE(Case(farm).exportSvgs("/nonexistent", true, error).empty());
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(error, caseServerError);
    EXPECT_NE(err.find("can not write to /nonexistent/"), std::string::npos) << err;
}
