// The reports of a stored case as their readers get them: the text, XML and spreadsheet files of the command
// line against golden files, the XML files through the schema checker, the style sheets and the HTML pages in a
// browser, the packed spreadsheet as a zip and in an office program. The clients are programs of the machine
// (xmllint, chromium); a machine without them fails these tests with a note on what to install. Only the office
// program, a large install, is optional: without it its test is skipped with a note.
#include "Farm.h"
#include "RunTarvo.h"
#include "TemporaryDatabase.h"

#include <tarvo/core/KernelStart.h>
#include <tarvo/persistency/Configuration.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <regex>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// The script of the repository that packs a spreadsheet report into a spreadsheet file.
std::string packScript() {
    return (fs::path(TARVO_REPORTS_DIR) / "../../../scripts/pack_ods.py").lexically_normal();
}

const char* const missingClient =
    " is not installed: the reports are checked with it. Install the Debian package "
    "(scripts/setup.sh lists it) and run the tests again.";

// A report file compared with its golden file; timestamps change from run to run and are masked. With
// TARVO_UPDATE_GOLDEN set the golden file is written anew.
void expectGolden(const fs::path& file, const std::string& golden) {
    static const std::regex timestamp("<timestamp>[0-9]{8}-[0-9]{4}</timestamp>");
    const std::string text = std::regex_replace(readFile(file), timestamp, "<timestamp>MASKED</timestamp>");
    const fs::path path = fs::path(TARVO_GOLDEN_DIR) / golden;
    if (std::getenv("TARVO_UPDATE_GOLDEN")) {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }
    ASSERT_TRUE(fs::exists(path)) << path;
    EXPECT_EQ(text, readFile(path)) << "report " << file << " differs from " << path;
}

// The farm of the test collection, stored in a database of its own and calculated, and the command line
// that works on it in a folder of its own.
class Reports : public ::testing::Test {
protected:
    Reports() {
        configuration_ = folder_.path() + "/TARVO.conf";
        database_.writeConfiguration(configuration_);
    }
    void SetUp() override {
        const TarvoRun created = run({"new", "Farm<Tank>", "F1", "A small farm"});
        ASSERT_EQ(created.idTxt, "0\n") << created.err;
        const TarvoRun calculated = run({"calculate", "0"});
        ASSERT_EQ(calculated.idTxt, "0\n") << calculated.err;
    }
    TarvoRun run(const std::vector<std::string>& words) {
        return runProgram(TARVO_FIXTURE_EXECUTABLE, words, folder_.path(),
                          {{"TARVO_TEST_CONFIGURATION", configuration_}});
    }
    // The XML report of the farm into the folder "xml".
    std::string xmlReport() {
        const std::string dir = folder_.path() + "/xml";
        fs::create_directory(dir);
        const TarvoRun exported = run({"xml", "0", dir});
        EXPECT_EQ(exported.idTxt, "0\n") << exported.err;
        EXPECT_NE(exported.out.find("Tarvo::User::Case::exportXml * Recursively dumping as xml\n"),
                  std::string::npos);
        return dir;
    }
    // What a headless browser makes of `url`: the document after its scripts ran, and its log.
    TarvoRun browse(const std::string& url, bool fileAccess = false) {
        if (program("chromium").empty()) {
            ADD_FAILURE() << "chromium" << missingClient;
            return {};
        }
        return browseHeadless(url, folder_.path(), fileAccess);
    }
    // The still of the test collection after the farm, calculated, so that its spreadsheet report is the last
    // one that calculate left.
    void calculateStill() {
        const TarvoRun created = run({"new", "Still", "D1", "A still", R"({"quantities":{"split":0.4}})"});
        ASSERT_EQ(created.idTxt, "5\n") << created.err;
        const TarvoRun calculated = run({"calculate", "5"});
        ASSERT_EQ(calculated.idTxt, "5\n") << calculated.err;
    }
    static void expectNoScriptErrors(const TarvoRun& page) {
        EXPECT_EQ(page.err.find("Uncaught"), std::string::npos) << page.err;
        EXPECT_EQ(page.err.find(":ERROR:CONSOLE"), std::string::npos) << page.err;
    }

    TemporaryFolder folder_;
    TemporaryDatabase database_;
    std::string configuration_;
};

} // namespace

TEST_F(Reports, TextReportMatchesItsGoldenFile) {
    const TarvoRun exported = run({"txt", "0", "farm"});
    ASSERT_EQ(exported.idTxt, "0\n") << exported.err;
    expectGolden(folder_.path() + "/farm.txt", "farm.txt");
    const TarvoRun again = run({"txt", "0", "farm"});
    EXPECT_NE(
        again.out.find("Tarvo::User::Case::exportTxt * The farm.txt file exists and will be overwritten\n"),
        std::string::npos)
        << again.out;
}

// Streams ahead of flowsheets ahead of units in the contents, neighbours and ancestors in the files of the
// models, angle brackets of the root's type as parentheses, and no file beyond one for each model and the
// contents.
TEST_F(Reports, XmlReportMatchesItsGoldenFiles) {
    const std::string dir = xmlReport();
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(dir))
        files.push_back(entry.path().filename());
    std::sort(files.begin(), files.end());
    EXPECT_EQ(files, (std::vector<std::string>{"0.xml", "1.xml", "2.xml", "3.xml", "4.xml", "toc.xml"}));
    for (const std::string& file : files)
        expectGolden(dir + "/" + file, "xml/" + file);
}

TEST_F(Reports, EveryXmlFileIsWellFormedAndValidAgainstItsSchema) {
    const std::string xmllint = program("xmllint");
    ASSERT_FALSE(xmllint.empty()) << "xmllint" << missingClient << " (package libxml2-utils)";
    const std::string dir = xmlReport();
    for (const auto& entry : fs::directory_iterator(dir)) {
        const std::string file = entry.path();
        const TarvoRun wellFormed = runProgram(xmllint, {"--noout", file}, folder_.path());
        EXPECT_EQ(wellFormed.exitCode, 0) << file << "\n" << wellFormed.err;
        const std::string schema = entry.path().filename() == "toc.xml" ? "toc_new.xsd" : "model_new.xsd";
        const TarvoRun valid =
            runProgram(xmllint, {"--noout", "--schema", std::string(TARVO_REPORTS_DIR) + "/" + schema, file},
                       folder_.path());
        EXPECT_EQ(valid.exitCode, 0) << file << "\n" << valid.err;
        EXPECT_NE(valid.err.find(file + " validates"), std::string::npos) << valid.err;
    }
}

TEST_F(Reports, XmlReportFailures) {
    const TarvoRun missing = run({"xml", "0", folder_.path() + "/nowhere"});
    EXPECT_EQ(missing.idTxt, "-84\n");
    EXPECT_NE(
        missing.err.find("Generic Run-Time error: can not write to " + folder_.path() + "/nowhere/0.xml\n"),
        std::string::npos)
        << missing.err;
    EXPECT_NE(missing.err.find("Called from function: Tarvo::User::Case::exportXml"), std::string::npos);
    EXPECT_EQ(run({"xml", "999", folder_.path()}).idTxt, "-81\n");
    EXPECT_EQ(run({"xml", "0"}).idTxt, "-1\n"); // the folder is no option
}

// The style sheets of the repository, put beside the report as a reader would, turn the contents and a model
// file into pages with working links.
TEST_F(Reports, StyleSheetsShowTheXmlReportInABrowser) {
    const std::string dir = xmlReport();
    for (const char* file : {"model.xsl", "flowsheet.xsl", "model_new.xsd", "toc_new.xsd"})
        fs::copy_file(fs::path(TARVO_REPORTS_DIR) / file, fs::path(dir) / file);

    const TarvoRun contents = browse("file://" + dir + "/toc.xml", true);
    expectNoScriptErrors(contents);
    EXPECT_NE(contents.out.find("<title>Contents of F1</title>"), std::string::npos) << contents.out;
    const auto water = contents.out.find("<a href=\"1.xml\">Water</a>");
    const auto tank = contents.out.find("<a href=\"2.xml\">Tank</a>");
    const auto pump = contents.out.find("<a href=\"3.xml\">Pump</a>");
    ASSERT_NE(pump, std::string::npos) << contents.out;
    EXPECT_LT(water, tank);
    EXPECT_LT(tank, pump);

    const TarvoRun motor = browse("file://" + dir + "/4.xml", true);
    expectNoScriptErrors(motor);
    EXPECT_NE(motor.out.find("<title>F1:Pump:Motor [Motor]</title>"), std::string::npos) << motor.out;
    const auto root = motor.out.find("<a href=\"0.xml\" title=\"A small farm\">F1</a>");
    const auto parent = motor.out.find("<a href=\"3.xml\" title=\"Feed pump\">Pump</a>");
    ASSERT_NE(root, std::string::npos) << motor.out;
    EXPECT_LT(root, parent); // the path reads from the root down
    EXPECT_NE(motor.out.find(">0.8</td>"), std::string::npos);
}

TEST_F(Reports, HtmlPagesOpenOnTheirMessagesInABrowser) {
    Tarvo::Core::startKernel();
    registerFarm();
    std::unique_ptr<Model> farm(my_cast<Model*>(
        NodeFactory::create("Farm<Tank>", {"F1", "A small farm"}, 0, nullptr, nullptr, nullptr), "test"));
    farm->Q("hours") = Value(20.0, "h"); // more than the tank holds
    farm->calculate(0);
    const std::string dir = folder_.path() + "/html";
    fs::create_directory(dir);
    farm->printHtml(dir.c_str());
    Tarvo::Core::stopKernel();

    const TarvoRun page = browse("file://" + dir + "/0.html");
    expectNoScriptErrors(page);
    // The panes are set up when the page has loaded: the first tab is active and only its pane is shown.
    EXPECT_NE(page.out.find("id=\"tab1\" class=\"tab-active\">Messages</a>"), std::string::npos) << page.out;
    EXPECT_NE(page.out.find("class=\"tab-disabled\">Subobjects</a>"), std::string::npos);
    EXPECT_NE(page.out.find("<div id=\"pane1\" style=\"display: block;\">"), std::string::npos);
    for (const char* hidden : {"pane2", "pane3", "pane4", "pane5"})
        EXPECT_NE(page.out.find(std::string("<div id=\"") + hidden + "\" style=\"display: none;\">"),
                  std::string::npos)
            << hidden;
    EXPECT_NE(page.out.find("<td>Error[0]</td><td>overfull tank; @ Tank</td>"), std::string::npos);
    EXPECT_NE(page.out.find("<a href=\"3.html\">Pump</a>"), std::string::npos);
    EXPECT_TRUE(fs::exists(dir + "/3.html"));
    EXPECT_TRUE(fs::exists(dir + "/4.html"));

    // A reader who picks the fourth tab sees the reals and nothing else.
    std::string text = readFile(dir + "/0.html");
    text.insert(text.rfind("</body>"), "<script>window.addEventListener(\"load\", function () "
                                       "{ document.getElementsByTagName(\"a\")[3].onclick(); });</script>");
    std::ofstream(dir + "/reals.html") << text;
    const TarvoRun reals = browse("file://" + dir + "/reals.html");
    expectNoScriptErrors(reals);
    EXPECT_NE(reals.out.find("class=\"tab-active\">Reals</a>"), std::string::npos) << reals.out;
    EXPECT_NE(reals.out.find("class=\"tab-disabled\">Messages</a>"), std::string::npos);
    EXPECT_NE(reals.out.find("<div id=\"pane4\" style=\"display: block;\">"), std::string::npos);
    EXPECT_NE(reals.out.find("<div id=\"pane1\" style=\"display: none;\">"), std::string::npos);
    EXPECT_NE(reals.out.find("<td>hours</td><td>72000 s</td>"), std::string::npos);
}

// The still of the test collection, calculated from the store: its streams with the values of the calculation,
// the total phase in the row of its stream and the other phases in rows below.
TEST_F(Reports, SpreadsheetReportOfACalculatedCaseMatchesItsGoldenFile) {
    ASSERT_NO_FATAL_FAILURE(calculateStill());
    expectGolden(folder_.path() + "/content.xml", "content.xml");
    const std::string xmllint = program("xmllint");
    ASSERT_FALSE(xmllint.empty()) << "xmllint" << missingClient << " (package libxml2-utils)";
    const TarvoRun wellFormed = runProgram(xmllint, {"--noout", "content.xml"}, folder_.path());
    EXPECT_EQ(wellFormed.exitCode, 0) << wellFormed.err;
}

// The script of the repository packs the report that calculate left: the first entry of the zip is the media
// type, stored, where readers of the format look for it; the manifest and the document follow. A document that
// is not well-formed, or is missing, is refused and nothing is packed.
TEST_F(Reports, PackedSpreadsheetReportIsAnOpenDocumentContainer) {
    const std::string python = program("python3");
    if (python.empty()) GTEST_SKIP() << "python3 is not installed; scripts/pack_ods.py needs it";
    const std::string script = packScript();
    const TarvoRun packed = runProgram(python, {script, "content.xml", "farm.ods"}, folder_.path());
    ASSERT_EQ(packed.exitCode, 0) << packed.err;

    // The local header of the first entry: method at offset 8, length of the extra field at 28, name at 30.
    const std::string ods = readFile(folder_.path() + "/farm.ods");
    ASSERT_GT(ods.size(), 84u);
    EXPECT_EQ(ods.substr(0, 4), "PK\x03\x04");
    EXPECT_EQ(ods.substr(8, 2), std::string(2, '\0')) << "mimetype is compressed";
    EXPECT_EQ(ods.substr(28, 2), std::string(2, '\0')) << "mimetype has an extra field";
    EXPECT_EQ(ods.substr(30, 54), "mimetypeapplication/vnd.oasis.opendocument.spreadsheet");

    const TarvoRun unpacked = runProgram(python, {"-m", "zipfile", "-e", "farm.ods", "unpacked"}, folder_.path());
    ASSERT_EQ(unpacked.exitCode, 0) << unpacked.err;
    EXPECT_EQ(readFile(folder_.path() + "/unpacked/content.xml"), readFile(folder_.path() + "/content.xml"));
    const std::string manifest = readFile(folder_.path() + "/unpacked/META-INF/manifest.xml");
    EXPECT_NE(manifest.find("manifest:media-type=\"application/vnd.oasis.opendocument.spreadsheet\" "
                            "manifest:full-path=\"/\""),
              std::string::npos)
        << manifest;
    EXPECT_NE(manifest.find("manifest:full-path=\"content.xml\""), std::string::npos);
    const std::string xmllint = program("xmllint");
    ASSERT_FALSE(xmllint.empty()) << "xmllint" << missingClient << " (package libxml2-utils)";
    const TarvoRun wellFormed = runProgram(xmllint, {"--noout", "unpacked/META-INF/manifest.xml"}, folder_.path());
    EXPECT_EQ(wellFormed.exitCode, 0) << wellFormed.err;

    std::ofstream(folder_.path() + "/broken.xml") << "<office:document-content>\n";
    const TarvoRun refused = runProgram(python, {script, "broken.xml", "broken.ods"}, folder_.path());
    EXPECT_NE(refused.exitCode, 0);
    EXPECT_NE(refused.err.find("broken.xml is not well-formed XML"), std::string::npos) << refused.err;
    EXPECT_FALSE(fs::exists(folder_.path() + "/broken.ods"));
    const TarvoRun missing = runProgram(python, {script, "missing.xml", "missing.ods"}, folder_.path());
    EXPECT_NE(missing.exitCode, 0);
    EXPECT_NE(missing.err.find("cannot read missing.xml: No such file or directory"), std::string::npos)
        << missing.err;
}

// The packed report of the still as an office program reads it: converted to CSV with text cells quoted and
// numbers as stored, it has the rows of the document in their order, its texts as texts and its numbers as
// numbers with all their digits.
TEST_F(Reports, PackedSpreadsheetReportOpensInAnOfficeProgramWithItsRowsAndNumbers) {
    const std::string python = program("python3"), soffice = program("soffice");
    if (python.empty()) GTEST_SKIP() << "python3 is not installed; scripts/pack_ods.py needs it";
    if (soffice.empty())
        GTEST_SKIP() << "soffice is not installed, so the packed report is not opened; the Debian package "
                        "libreoffice-calc has it";
    ASSERT_NO_FATAL_FAILURE(calculateStill());
    const std::string script = packScript();
    const TarvoRun packed = runProgram(python, {script, "content.xml", "still.ods"}, folder_.path());
    ASSERT_EQ(packed.exitCode, 0) << packed.err;
    // A profile of its own keeps the conversion away from the user's settings and from other running instances.
    // The filter options: comma, double quote, UTF-8, from line 1, text cells quoted, numbers as stored rather
    // than as shown.
    const TarvoRun converted =
        runProgram(soffice,
                   {"-env:UserInstallation=file://" + folder_.path() + "/office", "--headless", "--convert-to",
                    "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,true,true,false", "--outdir", "csv", "still.ods"},
                   folder_.path());
    ASSERT_EQ(converted.exitCode, 0) << converted.err;

    // The CSV that the document stands for: a text cell quoted, a number as written, an empty cell empty.
    static const std::regex cell(R"re(      <table:table-cell(?:><text:p>(.*)</text:p></table:table-cell>|)re"
                                 R"re( office:value-type="float" office:value="(.*)"/>|/>))re");
    std::istringstream document(readFile(folder_.path() + "/content.xml"));
    std::string expected, separator;
    std::smatch match;
    for (std::string line; std::getline(document, line);) {
        if (line == "    </table:table-row>") {
            expected += '\n';
            separator.clear();
        } else if (std::regex_match(line, match, cell)) {
            expected += separator + (match[1].matched ? '"' + match[1].str() + '"' : match[2].str());
            separator = ",";
        }
    }
    ASSERT_EQ(std::count(expected.begin(), expected.end(), '\n'), 8) << expected;
    EXPECT_EQ(readFile(folder_.path() + "/csv/still.csv"), expected);
}
