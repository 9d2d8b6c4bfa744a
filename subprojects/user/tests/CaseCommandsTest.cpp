#include "RunTarvo.h"
#include "SilentServer.h"
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
    EXPECT_NE(created.out.find("\nStored with id 0\n"), std::string::npos) << created.out;
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
    EXPECT_NE(copied.out.find("\nStored with id 2\n"), std::string::npos) << copied.out;
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
    EXPECT_EQ(removed.idTxt, "-92\n");
    EXPECT_NE(removed.err.find("can't find in N"), std::string::npos) << removed.err;
    EXPECT_EQ(rows("N"), 1);

    const TarvoRun unknownType = run({"new", "Nope"});
    EXPECT_EQ(unknownType.idTxt, "-93\n");
    EXPECT_NE(unknownType.err.find("Unsupported type: type Nope not found"), std::string::npos);
    EXPECT_EQ(rows("N"), 1); // nothing half written
}

// A server that accepts connections and never answers: every command that needs the store connects once,
// gives up after the connection timeout with the driver's reason and a negative code, and ends.
TEST_F(CaseCommands, ASilentServerEndsEveryCommandAfterOneConnection) {
    SilentServer server;
    std::ofstream(configuration_) << "[1.1]\nDatabaseHost=127.0.0.1\nDatabasePort=" << server.port()
                                  << "\nDatabaseConnectTimeout=2\n";
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"new", "Tank"}, {"calculate", "1"}, {"duplicate", "1"}, {"remove", "1"}, {"purge"}, {"txt", "1", "r"},
             {"check", "1"}}) {
        const TarvoRun r = run(words);
        EXPECT_LT(std::stoi(r.idTxt), 0) << words[0];
        EXPECT_NE(r.err.find("timeout expired"), std::string::npos) << words[0] << ": " << r.err;
        EXPECT_EQ(server.connections(), 1) << words[0];
    }
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

// Bad input of every kind ends with its reason on standard error, its negative code in an id.txt that no
// longer holds the result of the command before, and a store exactly as it was: no case removed, recalculated,
// cut apart or added. Each of these inputs once acted on another case, aborted, or was accepted.
TEST_F(CaseCommands, BadInputChangesNothingAndSaysWhy) {
    run({"new", "Tank", "T1", "", R"({"quantities":{"V":1.5}})"});
    const int farm = id(run({"new", "Farm<Tank>", "F1"}));
    ASSERT_EQ(farm, 1);
    const std::string part = std::to_string(farm + 1), wrapped = std::to_string(4294967296LL + farm);
    const std::string tables[] = {"N", "Q", "QV", "QVV", "S", "SV", "I", "IV"};
    const auto snapshot = [&] {
        std::ostringstream state;
        for (const std::string& table : tables) state << rows(table) << ' ';
        state << quantity(0, "m"); // a calculation of case 0 would fill it
        return state.str();
    };
    const std::string before = snapshot();
    struct Bad {
        std::vector<std::string> words;
        int code;
        std::string reason;
    };
    const std::string notAnId = "is not an integer from 0 to 2147483647";
    const std::string notARoot = "inside a case, not the root of one";
    const std::string descriptor = "Failed to parse Case descriptor: ";
    const Bad bad[] = {
        {{"remove", "abc"}, -1, "The id abc " + notAnId},
        {{"calculate", "abc"}, -1, notAnId},
        {{"calculate", "12abc"}, -1, notAnId},
        {{"check", "1e3"}, -1, notAnId},
        {{"txt", " 0"}, -1, notAnId},
        {{"xml", "-1", "."}, -1, notAnId},
        {{"remove", wrapped}, -1, notAnId},
        {{"duplicate", wrapped}, -1, notAnId},
        {{"remove", part}, -92, notARoot},
        {{"calculate", part}, -92, notARoot},
        {{"check", part}, -92, notARoot},
        {{"duplicate", part}, -92, notARoot},
        {{"txt", part}, -92, notARoot},
        {{"xml", part, "."}, -92, notARoot},
        {{"purgeall"}, -1, "Incorrect command line parameters"},
        {{"removeall", "0"}, -1, "Incorrect command line parameters"},
        {{"new", "Pump"}, -92, "type Pump can not be the root of a case"},
        {{"new", "Tank", "T", "", R"({"type":"Motor"})"}, -92, "type Motor can not be the root of a case"},
        {{"new", "Tank", "T", "", R"({"quantities":{"seqTol":"abc"}})"}, -92, descriptor},
        {{"new", "Tank", "T", "", R"({"integerOptions":{"g":2147483648}})"}, -92, descriptor},
        {{"new", "Tank", "T", "", "{"}, -92, descriptor},
        {{"new", "Tank", "T", "", "{} x"}, -92, descriptor},
        {{"new", "Tank", "T", "", R"({"quantitites":{}})"}, -92, descriptor + "unknown key"},
        {{"new", "Tank", "T", "", std::string(100000, '[')}, -92, descriptor},
        {{"new", "Tank", "T", "", R"({"quantities":{"nosuch":1}})"}, -92, "quantity nosuch of the descriptor is not in the case"},
        {{"new", "Farm<Tank>", "F", "", R"({"quantities":{"Water.x[2]":0.5}})"}, -92, "Water.x[2] of the descriptor is not"},
        {{"new", "Farm<Tank>", "F", "", R"({"quantities":{"Water.x[0]":1.5}})"}, -92, "outside the range of a fraction"},
        {{"new", "Farm<Tank>", "F", "", R"({"quantities":{"Pump.dP":-1e5}})"}, -92, "Pump.dP: -100000 Pa is below 0 Pa"},
        {{"txt", "0", "/nonexistent/f"}, -84, "can not write to /nonexistent/f.txt"},
        {{"xml", "0", ""}, -84, "no folder named for the xml report"},
    };
    for (const Bad& b : bad) {
        std::ofstream(folder_.path() + "/id.txt") << "0\n"; // the success of an earlier command
        const TarvoRun r = run(b.words);
        const std::string what = b.words[0] + " " + (b.words.size() > 1 ? b.words[1].substr(0, 20) : "");
        EXPECT_EQ(r.idTxt, std::to_string(b.code) + "\n") << what << "\n" << r.err;
        EXPECT_EQ(r.exitCode, 256 + b.code) << what;
        EXPECT_NE(r.err.find(b.reason), std::string::npos) << what << "\n" << r.err;
        EXPECT_EQ(snapshot(), before) << what;
    }
    // The cases that the bad commands named are whole: both still calculate.
    EXPECT_EQ(run({"calculate", "0"}).idTxt, "0\n");
    EXPECT_EQ(run({"calculate", std::to_string(farm)}).idTxt, std::to_string(farm) + "\n");
}

