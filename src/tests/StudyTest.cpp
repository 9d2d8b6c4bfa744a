// The studies as a user runs them on the membrane test bed: `sensitivity` and `homotopy` read their input
// files in the working folder and work on a stored case. Each row of a sensitivity run is checked against a
// case made and calculated on its own with that input; a homotopy's end against a direct calculation there.
// The store settings of the test process take effect once in a process, so each test runs in one of its own,
// as ctest runs them.
#include "RunTarvo.h"
#include "StoredCases.h"
#include "TemporaryDatabase.h"

#include <tarvo/models/ModelCollection.h>
#include <tarvo/persistency/Configuration.h>
#include <tarvo/user/Case.h>
#include <tarvo/user/Kernel.h>

#include <gtest/gtest.h>
#include <json/json.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <regex>
#include <sstream>
#include <thread>

#include <sys/wait.h>

namespace {

using Words = std::vector<std::string>;

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t n = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

// The numbers of the "variable" elements of each "result", in order: controlled values, then monitored.
std::vector<std::vector<double>> rowsOf(const std::string& xml) {
    std::vector<std::vector<double>> rows;
    static const std::regex result("<result>([\\s\\S]*?)</result>"), variable("<variable>([^<]*)</variable>");
    for (std::sregex_iterator r(xml.begin(), xml.end(), result), end; r != end; ++r) {
        const std::string body = (*r)[1];
        rows.emplace_back();
        for (std::sregex_iterator v(body.begin(), body.end(), variable); v != end; ++v)
            rows.back().push_back(std::strtod((*v)[1].str().c_str(), nullptr));
    }
    return rows;
}

const char* const sensitivityInput = R"(<?xml version="1.0" encoding="UTF-8"?>
<sensitivity>
  <name>Area of the module</name>
  <type>Test&lt;Membrane12Rtsc&gt;</type>
  <id>ID</id>
  <order>lexicographical</order>
  <timeout>600</timeout>
  <startinground>START</startinground>
  <controlled>
    <variable start="10" end="40" points="POINTS" unit="m2" label="Membrane area">GM.A</variable>
  </controlled>
  <monitored>
    <variable label="Stage cut">GM.stageCut</variable>
    <variable label="Recovery of CH4">recovery[1]</variable>
  </monitored>
</sensitivity>
)";

class StudyTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        Tarvo::User::setModelCollection(&Tarvo::Models::registerModelCollection);
        Tarvo::User::registerKernelTypes();
    }
    void SetUp() override {
        database_.writeConfiguration(configuration_);
        Configuration::useKernelFile(configuration_);
    }

    TarvoRun run(const Words& words) {
        return runProgram(TARVO_FIXTURE_EXECUTABLE, words, folder_.path(), {{"TARVO_TEST_CONFIGURATION", configuration_}});
    }
    // A test bed made by `new` with `quantities` (a JSON object) and calculated; its id.
    int calculatedBed(const std::string& quantities = "{}") {
        const TarvoRun created = run({"new", "Test<Membrane12Rtsc>", "bed", "", "{\"quantities\":" + quantities + "}"});
        EXPECT_EQ(created.exitCode, 0) << created.err;
        const int id = std::atoi(created.idTxt.c_str());
        const TarvoRun calculated = run({"calculate", std::to_string(id)});
        EXPECT_EQ(calculated.exitCode, 0) << calculated.err;
        return id;
    }
    // The stored value at `tag` of the case `id`.
    static double stored(int id, const std::string& tag) {
        const Tarvo::User::Case c{Tarvo::User::Handle(id)};
        int error = 0;
        const double value = c.get(tag, error);
        EXPECT_EQ(error, 0) << tag;
        return value;
    }
    void writeSensitivityInput(int id, int points, int start = 0) {
        std::string text = sensitivityInput;
        text = std::regex_replace(text, std::regex("ID"), std::to_string(id));
        text = std::regex_replace(text, std::regex("POINTS"), std::to_string(points));
        text = std::regex_replace(text, std::regex("START"), std::to_string(start));
        write("SensitivityInput.xml", text);
    }
    void write(const std::string& name, const std::string& text) { std::ofstream(folder_.path() + "/" + name) << text; }
    std::string file(const std::string& name) const { return folder_.path() + "/" + name; }

    TemporaryDatabase database_;
    TemporaryFolder folder_;
    const std::string configuration_ = folder_.path() + "/TARVO.conf";
};

} // namespace

// Seven areas from 10 to 40 m2: each row holds what `new` with that area and `calculate` store, the case
// itself stays as it was, and the files beside the results show the same rows to a spreadsheet and a browser.
TEST_F(StudyTest, SensitivityRowsEqualSeparateCalculations) {
    const int id = calculatedBed();
    const std::string before = caseContents(database_, id);
    writeSensitivityInput(id, 7);
    const TarvoRun study = run({"sensitivity", std::to_string(id)});
    ASSERT_EQ(study.exitCode, 0) << study.err;
    EXPECT_EQ(study.idTxt, std::to_string(id) + "\n");
    EXPECT_EQ(caseContents(database_, id), before);

    const std::vector<std::vector<double>> rows = rowsOf(readFile(file("SensitivityResults.xml")));
    ASSERT_EQ(rows.size(), 7u);
    for (int r = 0; r < 7; ++r) {
        const double area = 10 + 5 * r;
        SCOPED_TRACE(area);
        ASSERT_EQ(rows[r].size(), 3u);
        EXPECT_EQ(rows[r][0], area);
        const int direct = calculatedBed("{\"GM.A\":" + std::to_string(area) + "}");
        const double stageCut = stored(direct, "GM.stageCut"), recovery = stored(direct, "recovery[1]");
        EXPECT_NEAR(rows[r][1], stageCut, 1e-9 * stageCut);
        EXPECT_NEAR(rows[r][2], recovery, 1e-9 * recovery);
        EXPECT_NE(study.err.find("round " + std::to_string(r + 1) + " / 7: [GM.A = " + std::to_string(int(area)) +
                                 " m2] converged in "),
                  std::string::npos)
            << study.err;
    }

    const std::string csv = readFile(file("SensitivityResults.csv"));
    EXPECT_EQ(csv.substr(0, csv.find('\r')),
              "round,time [s],errors,warnings,iterations,Membrane area [m2],Stage cut,Recovery of CH4");
    EXPECT_EQ(count(csv, "\r\n"), 8u);

    ASSERT_FALSE(program("xmllint").empty()) << "xmllint is not installed (scripts/setup.sh lists its package)";
    ASSERT_FALSE(program("chromium").empty()) << "chromium is not installed (scripts/setup.sh lists its package)";
    const TarvoRun lint = runProgram(program("xmllint"), {"--noout", "SensitivityResults.svg"}, folder_.path());
    EXPECT_EQ(lint.exitCode, 0) << lint.err;
    const TarvoRun schema = runProgram(program("xmllint"), {"--noout", "--schema", TARVO_SENSITIVITY_SCHEMA,
                                                            "SensitivityResults.xml"},
                                       folder_.path());
    EXPECT_EQ(schema.exitCode, 0) << schema.err;
    const TarvoRun shown = browseHeadless("file://" + file("SensitivityResults.svg"), folder_.path());
    EXPECT_EQ(shown.exitCode, 0) << shown.err;
    EXPECT_EQ(shown.err.find(":ERROR:CONSOLE"), std::string::npos) << shown.err;
    EXPECT_NE(shown.out.find(">Membrane area [m2]</text>"), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find(">Recovery of CH4</text>"), std::string::npos) << shown.out;
    EXPECT_EQ(count(shown.out, "<polyline"), 2u); // one line in each panel
}

// Rows of a sensitivity run killed at random moments: the results file is always whole and well-formed, and
// holds every round that the progress on standard error reported, and at most the one after.
TEST_F(StudyTest, AKilledSensitivityRunLeavesWellFormedResultsOfItsRounds) {
    const int id = calculatedBed();
    writeSensitivityInput(id, 40);
    const auto started = std::chrono::steady_clock::now();
    ASSERT_EQ(run({"sensitivity", std::to_string(id)}).exitCode, 0);
    const auto span = std::chrono::steady_clock::now() - started;
    std::mt19937 random(30);
    std::uniform_int_distribution<long long> moment(0, span.count());
    int midRun = 0;
    for (int trial = 0; trial < 8; ++trial) {
        SCOPED_TRACE(trial);
        std::remove(file("SensitivityResults.xml").c_str());
        const pid_t pid = startProgram(TARVO_FIXTURE_EXECUTABLE, {"sensitivity", std::to_string(id)}, folder_.path(),
                                       {{"TARVO_TEST_CONFIGURATION", configuration_}});
        std::this_thread::sleep_for(std::chrono::steady_clock::duration(moment(random)));
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
        const std::size_t reported = count(readFile(file("stderr")), "converged in");
        if (reported == 0 && !std::ifstream(file("SensitivityResults.xml"))) continue; // killed before the first write
        const TarvoRun lint = runProgram(program("xmllint"), {"--noout", "SensitivityResults.xml"}, folder_.path());
        EXPECT_EQ(lint.exitCode, 0) << lint.err;
        const std::vector<std::vector<double>> rows = rowsOf(readFile(file("SensitivityResults.xml")));
        midRun += rows.size() < 40;
        EXPECT_GE(rows.size(), reported);
        EXPECT_LE(rows.size(), reported + 1);
        for (std::size_t r = 0; r < rows.size(); ++r) EXPECT_DOUBLE_EQ(rows[r].at(0), 10 + 30.0 / 39 * r) << r;
    }
    std::cout << "killed with rounds to go " << midRun << " of 8" << std::endl;
}

// Inputs that are no study: each ends with its message and a negative code, and nothing is calculated.
TEST_F(StudyTest, MalformedInputsEndWithTheirMessageAndANegativeCode) {
    const int id = calculatedBed();
    const std::string before = caseContents(database_, id);
    const std::string good = std::regex_replace(
        std::regex_replace(std::regex_replace(sensitivityInput, std::regex("ID"), std::to_string(id)), std::regex("POINTS"),
                           "3"),
        std::regex("START"), "0");
    const auto replaced = [&](const std::string& from, const std::string& to) {
        return std::regex_replace(good, std::regex(from), to);
    };
    const struct {
        std::string input;
        std::string code;
        std::string message;
    } cases[] = {
        {"", "-92", "error opening tree"},
        {replaced("<type>.*</type>", ""), "-92", "invalid XML input file, could not read type field"},
        {replaced("<timeout>600</timeout>", "<timeout>soon</timeout>"), "-92", "could not read timeout field"},
        {replaced("(</?)sensitivity>", "$1study>"), "-92", "could not opening sensitivity tree"},
        {replaced("points=\"3\"", "points=\"1000\""), "-92", "points is not an integer from 1 to 999"},
        {replaced("<startinground>0", "<startinground>3"), "-84", "Starting round outside upper limit"},
        {replaced(">GM.A<", ">GM.X<"), "-84", "non-existant tag X"},
        {replaced("unit=\"m2\"", "unit=\"bar\""), "-84", "units"},
        {replaced("unit=\"m2\"", "unit=\"furlong\""), "-84", "furlong"},
        {replaced(">recovery\\[1\\]<", ">recovery[9]<"), "-84", "non-existant tag recovery"},
        {replaced("start=\"10\"(.*)unit=\"m2\"(.*)>GM.A<", "start=\"-10\"$1unit=\"K\"$2>FEED.T<"), "-84",
         "quantity FEED.T: -10 K is not above 0 K"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.input);
        write("SensitivityInput.xml", c.input);
        const TarvoRun study = run({"sensitivity", std::to_string(id)});
        EXPECT_EQ(study.idTxt, c.code + "\n") << study.err;
        EXPECT_EQ(study.exitCode, 256 + std::stoi(c.code));
        EXPECT_NE(study.err.find(c.message), std::string::npos) << study.err;
        EXPECT_EQ(study.err.find("converged in"), std::string::npos);
    }
    std::remove(file("SensitivityInput.xml").c_str());
    EXPECT_NE(run({"sensitivity", std::to_string(id)}).err.find("error opening file"), std::string::npos);

    const struct {
        std::string input;
        std::string message;
    } homotopies[] = {
        {"<homotopy><type>T</type><id>0</id><points>1</points><controlled/></homotopy>", "a homotopy needs at least 2 points"},
        {"<homotopy><type>T</type><id>0</id><points>x</points><controlled/></homotopy>", "could not read id field"},
        {"<homotopy><type>T</type><id>0</id><points>3</points></homotopy>", "could not open controlled variables tree"},
        {"<homotopy><type>T</type><id>0</id><points>3</points><controlled><variable start=\"1\" end=\"2\">GM.B</variable>"
         "</controlled></homotopy>", "non-existant tag B"},
        {"<other/>", "error opening homotopy"},
    };
    for (const auto& c : homotopies) {
        SCOPED_TRACE(c.input);
        write("Homotopy.xml", c.input);
        const TarvoRun homotopy = run({"homotopy", std::to_string(id)});
        EXPECT_LT(std::atoi(homotopy.idTxt.c_str()), 0) << homotopy.err;
        EXPECT_NE(homotopy.err.find(c.message), std::string::npos) << homotopy.err;
    }
    EXPECT_EQ(caseContents(database_, id), before);
}

// From 20 to 200 m2 in ten points the case ends stored at 200 m2 with the results of a direct calculation
// there; a run whose first point fails leaves the stored case as it was.
TEST_F(StudyTest, HomotopyEndsStoredAtItsEnd) {
    const int id = calculatedBed();
    write("Homotopy.xml", "<homotopy><type>Test&lt;Membrane12Rtsc&gt;</type><id>" + std::to_string(id) +
                              "</id><points>10</points><controlled><variable start=\"20\" end=\"200\">GM.A</variable>"
                              "</controlled></homotopy>");
    const TarvoRun homotopy = run({"homotopy", std::to_string(id)});
    ASSERT_EQ(homotopy.exitCode, 0) << homotopy.err;
    EXPECT_EQ(homotopy.idTxt, std::to_string(id) + "\n");
    EXPECT_NE(homotopy.err.find("point 10 / 10: [GM.A = 200] converged in "), std::string::npos) << homotopy.err;
    EXPECT_EQ(stored(id, "GM.A"), 200.0);
    const int direct = calculatedBed("{\"GM.A\":200}");
    for (const char* tag : {"GM.stageCut", "recovery[0]", "recovery[1]", "purity[0]", "PERMEATE:Tphase.ndot"}) {
        const double expected = stored(direct, tag);
        EXPECT_NEAR(stored(id, tag), expected, 1e-9 * std::fabs(expected)) << tag;
    }

    // A feed at 0 Pa is outside the range of every flash: the first point fails.
    const std::string before = caseContents(database_, id);
    write("Homotopy.xml", "<homotopy><type>T</type><id>0</id><points>3</points><controlled>"
                          "<variable start=\"0\" end=\"1e5\">FEED.P</variable></controlled></homotopy>");
    const TarvoRun failed = run({"homotopy", std::to_string(id)});
    EXPECT_EQ(failed.exitCode, 0) << failed.err;
    EXPECT_NE(failed.err.find("point 1 / 3: [FEED.P = 0] failed with "), std::string::npos) << failed.err;
    EXPECT_EQ(caseContents(database_, id), before);
}

// The library's JSON forms: a sensitivity run gives its rows as JSON, `set` puts the start of a homotopy
// input into the case, and a text that is no input is refused with -84.
TEST_F(StudyTest, JsonFormsOfTheFacade) {
    const int id = calculatedBed();
    const std::string previous = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path()); // the results files go to the working folder
    Tarvo::User::Case c{Tarvo::User::Handle(id)};
    int error = 1;
    const std::string json = c.sensitivitySync(
        R"({"type":"Test<Membrane12Rtsc>","id":0,"order":"","timeout":0,"startingRound":0,
            "controlled":[{"variable":"GM.A","unit":"m2","start":20,"end":30,"points":2}],
            "monitored":[{"variable":"GM.stageCut"}]})",
        error);
    EXPECT_EQ(error, 0);
    Json::Value results;
    std::istringstream(json) >> results;
    const Json::Value& rows = results["results"]["result"];
    ASSERT_EQ(rows.size(), 2u) << json;
    EXPECT_EQ(rows[1]["controlled"]["variable"][0].asDouble(), 30.0);
    EXPECT_EQ(rows[1]["errors"].asInt(), 0);
    EXPECT_EQ(rowsOf(readFile("SensitivityResults.xml")).size(), 2u);

    EXPECT_EQ(c.set(R"({"type":"T","id":0,"points":2,"controlled":[{"variable":"GM.A","start":25,"end":50}]})"), 0);
    EXPECT_EQ(c.get("GM.A", error), 25.0);
    testing::internal::CaptureStderr();
    EXPECT_EQ(c.homotopySync(R"({"type":"T","id":0,"points":2})"), -84);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Failed to parse homotopy input: the input has no controlled"),
              std::string::npos);
    c.sensitivitySync("{", error);
    EXPECT_EQ(error, -84);
    std::filesystem::current_path(previous);
}
