#include "RunTarvo.h"
#include "TemporaryDatabase.h"

#include <tarvo/persistency/Configuration.h>
#include <tarvo/persistency/PersistencyPostgres.h>
#include <tarvo/persistency/Quantity.h>
#include <tarvo/persistency/StringVector.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

// The command line with the test collection, on a database of its own, in a folder of its own.
class CaseCommands : public ::testing::Test {
protected:
    CaseCommands() {
        configuration_ = folder_.path() + "/TARVO.conf";
        database_.writeConfiguration(configuration_);
    }
    TarvoRun run(const std::vector<std::string>& words) {
        return runProgram(TARVO_FIXTURE_EXECUTABLE, words, folder_.path(), {{"TARVO_TEST_CONFIGURATION", configuration_}});
    }
    static int id(const TarvoRun& r) { return std::stoi(r.idTxt); }
    double quantity(int node, const std::string& tag) {
        PersistencyPostgres store(database_.connection());
        Quantity q(tag, "", "[invalid unit]", nullptr);
        store.read(node, QuantityMap{{tag, &q}});
        return q.toDouble();
    }
    int rows(const std::string& table) { return PersistencyPostgres(database_.connection()).countRows(table, -1); }

    TemporaryFolder folder_;
    TemporaryDatabase database_;
    std::string configuration_;
};

} // namespace

TEST_F(CaseCommands, NewCalculateDuplicateRemovePurge) {
    const TarvoRun created = run({"new", "Tank", "T1", "Water tank", R"({"quantities":{"V":3.5},"stringOptions":{"content":"brine"}})"});
    ASSERT_EQ(created.exitCode, 0) << created.err;
    EXPECT_EQ(created.idTxt, "0\n");
    EXPECT_NE(created.out.find("Tarvo::User::createCase * Creating a new model [ si [] ss [[ content, brine] ]]"),
              std::string::npos)
        << created.out;
    EXPECT_NE(created.out.find("Saved to persistent storage"), std::string::npos);
    EXPECT_EQ(quantity(0, "V"), 3.5);
    EXPECT_EQ(quantity(0, "m"), 0.0);

    const TarvoRun calculated = run({"calculate", "0"});
    ASSERT_EQ(calculated.exitCode, 0) << calculated.err;
    EXPECT_EQ(calculated.idTxt, "0\n");
    EXPECT_NE(calculated.out.find("Tarvo::User::Case::calculateSync * Computation complete with 0 errors and 0 warnings"),
              std::string::npos)
        << calculated.out;
    EXPECT_EQ(quantity(0, "m"), 3500.0);

    const TarvoRun second = run({"new", "Tank", "T2"});
    EXPECT_EQ(second.idTxt, "1\n"); // the next block

    const TarvoRun copied = run({"duplicate", "0", "c", "d"});
    ASSERT_EQ(copied.exitCode, 0) << copied.err;
    EXPECT_EQ(copied.idTxt, "2\n");
    EXPECT_EQ(quantity(2, "m"), 3500.0);
    EXPECT_EQ(rows("N"), 3);

    const TarvoRun removed = run({"remove", "2"});
    EXPECT_EQ(removed.exitCode, 0);
    EXPECT_EQ(removed.idTxt, "0\n");
    EXPECT_EQ(rows("N"), 2);

    const TarvoRun purged = run({"purge"});
    EXPECT_EQ(purged.idTxt, "0\n");
    EXPECT_EQ(rows("N"), 0);
    EXPECT_EQ(rows("Q"), 0);
}

TEST_F(CaseCommands, UnknownIdentifiers) {
    const TarvoRun calculated = run({"calculate", "999"});
    EXPECT_EQ(calculated.idTxt, "-81\n");
    EXPECT_EQ(calculated.exitCode, 256 - 81);
    EXPECT_NE(calculated.err.find("can't find in N"), std::string::npos) << calculated.err;
    EXPECT_NE(calculated.err.find("Called from function: Tarvo::User::Handle::Handle"), std::string::npos);

    const TarvoRun copied = run({"duplicate", "999"});
    EXPECT_EQ(copied.idTxt, "-93\n");
    EXPECT_NE(copied.err.find("Object factory error: Unsupported type: type  not found"), std::string::npos) << copied.err;

    run({"new", "Tank", "T1"});
    const TarvoRun removed = run({"remove", "999"});
    EXPECT_EQ(removed.idTxt, "0\n");
    EXPECT_EQ(rows("N"), 1);

    const TarvoRun unknownType = run({"new", "Nope"});
    EXPECT_EQ(unknownType.idTxt, "-93\n");
    EXPECT_NE(unknownType.err.find("Unsupported type: type Nope not found"), std::string::npos);
    EXPECT_EQ(rows("N"), 1); // nothing half written
}

TEST_F(CaseCommands, ErrorsOfTheModelAreStoredAndTheResultIsStillTheId) {
    run({"new", "Tank", "T1", "", R"({"quantities":{"V":20}})"});
    const TarvoRun calculated = run({"calculate"});
    EXPECT_EQ(calculated.idTxt, "0\n");
    EXPECT_NE(calculated.out.find("Computation complete with 1 errors and 0 warnings"), std::string::npos);
    EXPECT_NE(calculated.out.find("===== Logging error overfull tank; in T1"), std::string::npos);
    PersistencyPostgres store(database_.connection());
    StringVector errors("errors", "", 0, "", nullptr);
    store.read(0, StringVectorMap{{"errors", &errors}});
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0], "overfull tank;");
}

TEST_F(CaseCommands, TextReportsAndCheck) {
    run({"new", "Tank", "T1", "Small tank", R"({"quantities":{"V":1.5}})"});
    run({"calculate", "0"});
    EXPECT_EQ(run({"txt", "0"}).idTxt, "0\n");
    std::ifstream report(folder_.path() + "/0.txt");
    std::stringstream text;
    text << report.rdbuf();
    EXPECT_EQ(text.str().rfind("****** type = Tank TAG = T1 << DESCRIPTION Small tank\n*** Begin String attributes\n", 0), 0u)
        << text.str();
    EXPECT_NE(text.str().find("m = 1500 kg Mass of the content\n"), std::string::npos) << text.str();
    EXPECT_NE(text.str().find("content = water What the tank holds\n"), std::string::npos);
    EXPECT_NE(text.str().find("*** Begin Integer  attributes\nnCalculations = 1 Number of times"), std::string::npos);
    run({"txt", "0", "report"});
    run({"txt", "0", "a.txt.old"});
    EXPECT_TRUE(std::filesystem::exists(folder_.path() + "/report.txt"));
    EXPECT_TRUE(std::filesystem::exists(folder_.path() + "/a.txt.old"));

    const TarvoRun checked = run({"check", "0"});
    EXPECT_EQ(checked.idTxt, "0\n");
    EXPECT_NE(checked.out.find(std::string(80, '=') + "\n****** type = Tank"), std::string::npos) << checked.out;
    EXPECT_NE(checked.out.find(std::string(80, '-')), std::string::npos);
}

// The spreadsheet report follows every calculation of the command line, one that ends with errors in the model
// too. A report that cannot be written leaves the result alone; a case that cannot be found leaves no report.
TEST_F(CaseCommands, CalculateAlwaysLeavesTheSpreadsheetReport) {
    const std::string report = folder_.path() + "/content.xml";
    EXPECT_EQ(run({"calculate", "0"}).idTxt, "-81\n");
    EXPECT_FALSE(std::filesystem::exists(report));

    run({"new", "Tank", "T1", "", R"({"quantities":{"V":20}})"});
    const TarvoRun overfull = run({"calculate", "0"});
    EXPECT_NE(overfull.out.find("Computation complete with 1 errors and 0 warnings"), std::string::npos);
    EXPECT_EQ(overfull.idTxt, "0\n");
    std::ifstream in(report);
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_EQ(text.str().rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<office:document-content \n", 0), 0u)
        << text.str();

    const TarvoRun again = run({"calculate", "0"});
    EXPECT_NE(again.out.find("Tarvo::User::Case::exportOds * The content.xml file exists and will be overwritten\n"),
              std::string::npos)
        << again.out;

    std::filesystem::remove(report);
    std::filesystem::create_directory(report); // nothing can be written where the report goes
    const TarvoRun blocked = run({"calculate", "0"});
    EXPECT_EQ(blocked.idTxt, "0\n");
    EXPECT_EQ(blocked.exitCode, 0);
}
