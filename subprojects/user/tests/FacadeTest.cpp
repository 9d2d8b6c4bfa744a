#include "TemporaryDatabase.h"
#include "Farm.h"

#include <tarvo/core/KernelStart.h>
#include <tarvo/persistency/Configuration.h>
#include <tarvo/user/Case.h>
#include <tarvo/user/Cases.h>
#include <tarvo/user/ResultCodes.h>

#include <gtest/gtest.h>
#include <json/json.h>

#include <filesystem>
#include <fstream>

using namespace Tarvo::User;

namespace {

// The facade in this process, on a database of its own through a configuration file of its own.
class Facade : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        database_ = new TemporaryDatabase;
        const Configuration kernel(Configuration::kernelFile);
        file_ = std::filesystem::temp_directory_path() / ("tarvo-facade-" + database_->name() + ".conf");
        std::ofstream(file_) << "[1.1]\nDatabaseHost=" << kernel.setting("DatabaseHost").value_or("127.0.0.1")
                             << "\nDatabasePort=" << kernel.setting("DatabasePort").value_or("5432")
                             << " dbname=" << database_->name() << "\n";
        Configuration::useKernelFile(file_);
        Tarvo::Core::startKernel();
        registerFarm();
    }
    static void TearDownTestSuite() {
        Tarvo::Core::stopKernel();
        std::filesystem::remove(file_);
        delete database_;
    }
    static Handle newTank(const std::string& options = "") {
        int error = 1;
        Handle h = createCase("Tank", "T1", "A tank", options, error);
        EXPECT_EQ(error, 0);
        return h;
    }
    static TemporaryDatabase* database_;
    static std::string file_;
};

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
