// The report forms of a model that need no store: the text forms, the HTML pages, and how the file reports
// fail. The XML report of a stored case, with its table of contents, is compared with golden files by the
// tests of the command line.
#include <tarvo/core/KernelStart.h>
#include <tarvo/core/Model.h>
#include <tarvo/core/Report.h>
#include <tarvo/core/Version.h>
#include <tarvo/value/ActiveContext.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <regex>
#include <sstream>

using Tarvo::Persistency::Defaults;

namespace {

// A unit with a temperature, a name and a count, and children tagged as asked.
class Cell : public Model {
public:
    Cell(const Defaults& d, uint32_t id, Persistency* p, Persistent* parent, Persistent* root)
        : Model(d, id, p, parent, root) {
        addVariable(T);
        addVariable(name);
    }
    Tarvo::Utility::Category category() const override { return Tarvo::Utility::Category::unit; }
    void calculate(int) override {}
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }
    Quantity T{"T", "Temperature", "K", this, 300.0};
    String name{"name", "Name", "a <b> c", this};
};

class ModelReport : public ::testing::Test {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        if (!NodeFactory::registered("Cell<x>"))
            NodeFactory::registerType<Cell>("Cell<x>", "Test cell", "unit", false, {}, {}, {}, "", 1, 1);
        char pattern[] = "/tmp/tarvo-report-XXXXXX";
        dir_ = mkdtemp(pattern);
    }
    void TearDown() override {
        std::filesystem::remove_all(dir_);
        Tarvo::Core::stopKernel();
    }

    // root > {A, B > {U}}: ids in the order of construction, root 0, A 1, B 2, U 3.
    static std::unique_ptr<Cell> tree() {
        std::unique_ptr<Cell> root(dynamic_cast<Cell*>(
            NodeFactory::create("Cell<x>", {"root", "Root"}, 0, nullptr, nullptr, nullptr)));
        root->addChild("Cell<x>", {"A", "First"});
        root->addChild("Cell<x>", {"B", "Second"}).addChild("Cell<x>", {"U", "Inner"});
        return root;
    }
    std::string read(const std::string& name) const {
        std::ifstream in(dir_ + "/" + name);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
    static std::string runTimeMessage(const std::function<void()>& f) {
        try {
            f();
        } catch (const ErrorRunTime& e) {
            return e.message();
        }
        return "no error";
    }

    std::string dir_;
};

} // namespace

TEST_F(ModelReport, EscapeXmlTurnsOnlyAngleBracketsIntoParentheses) {
    EXPECT_EQ(Tarvo::Core::escapeXml("Test2<Membrane22Rtsc>"), "Test2(Membrane22Rtsc)");
    EXPECT_EQ(Tarvo::Core::escapeXml("a&b \"c\" <<>>"), "a&b \"c\" (())");
    EXPECT_EQ(Tarvo::Core::escapeXml(""), "");
}

TEST_F(ModelReport, TimestampIsTheLocalMinute) {
    const auto format = [](std::time_t t) {
        std::tm local{};
        localtime_r(&t, &local);
        char text[32];
        std::strftime(text, sizeof text, "%Y%m%d-%H%M", &local);
        return std::string(text);
    };
    const std::time_t before = std::time(nullptr);
    const std::string stamp = Tarvo::Core::reportTimestamp();
    const std::time_t after = std::time(nullptr);
    EXPECT_TRUE(std::regex_match(stamp, std::regex("[0-9]{8}-[0-9]{4}"))) << stamp;
    EXPECT_TRUE(stamp == format(before) || stamp == format(after)) << stamp;
}

TEST_F(ModelReport, PrintFullShowsDerivativesAndNeitherStringsNorIntegers) {
    std::unique_ptr<Cell> root(
        dynamic_cast<Cell*>(NodeFactory::create("Cell<x>", {"root", "Root"}, 0, nullptr, nullptr, nullptr)));
    root->addChild("Cell<x>", {"A", "First"});
    ActiveContext::push(2);
    root->T.active().setActive(1);
    std::ostringstream out;
    root->printFull(out);
    root->T.active().inactivate(1);
    ActiveContext::pop();
    EXPECT_EQ(out.str(), "****** type = Cell<x> TAG = root << DESCRIPTION Root\n"
                         "*** Begin Quantity attributes\n"
                         "T = 300 [ 0 1  ] Temperature\n"
                         "*** Begin A First\n"
                         "****** type = Cell<x> TAG = A << DESCRIPTION First\n"
                         "*** Begin Quantity attributes\n"
                         "T = 300 [ 0 0  ] Temperature\n"
                         "\n"
                         "*** End A First\n"
                         "\n");
}

TEST_F(ModelReport, TextReportOfAChildlessModelWithEveryKindOfItem) {
    std::unique_ptr<Cell> cell(
        dynamic_cast<Cell*>(NodeFactory::create("Cell<x>", {"c", "Cell"}, 0, nullptr, nullptr, nullptr)));
    cell->T = Value(1234.56789012345, "K");
    cell->reportWarning("w1");
    cell->reportWarning("w2");
    std::ostringstream out;
    cell->print(out, true, true, true, true);
    EXPECT_EQ(out.str(), "****** type = Cell<x> TAG = c << DESCRIPTION Cell\n"
                         "*** Begin String attributes\n"
                         "name = a <b> c Name\n"
                         "*** Begin StringVector attributes\n"
                         "errors = [] Errors from the last computation\n"
                         "warnings = [w1, w2, ] Warnings from the last computation\n"
                         "*** Begin Quantity attributes\n"
                         "T = 1234.56789012 K Temperature\n"
                         "*** Begin Integer  attributes\n"
                         "nCalculations = 0 Number of times the model has be been calculated\n"
                         "\n");
}

TEST_F(ModelReport, FilesThatCannotBeOpenedAreRunTimeErrors) {
    std::unique_ptr<Cell> root = tree();
    EXPECT_EQ(runTimeMessage([&] { root->printXml("/nonexistent", nullptr, nullptr); }),
              "Error was thrown by function: Model::printXml\nGeneric Run-Time error: can not write to "
              "/nonexistent/0.xml\n");
    // Pages below are written first, so the first failure is that of the first leaf.
    EXPECT_EQ(runTimeMessage([&] { root->printHtml("/nonexistent"); }),
              "Error was thrown by function: Model::printHtml\nGeneric Run-Time error: can not write to "
              "/nonexistent/1.html\n");
}

TEST_F(ModelReport, HtmlPagesHoldMessagesItemsAndLinksToThePagesBelow) {
    std::unique_ptr<Cell> root = tree();
    root->reportError("too cold");
    root->reportWarning("first");
    root->reportWarning("second <3");
    root->printHtml(dir_.c_str());
    for (const char* file : {"0.html", "1.html", "2.html", "3.html"})
        EXPECT_TRUE(std::filesystem::exists(dir_ + "/" + file)) << file;
    const std::string page = read("0.html");
    EXPECT_EQ(
        page.rfind(
            "<html><body onload='setupPanes(\"container1\", \"tab1\");'>\n<style type=\"text/css\">\n<!--\n",
            0),
        0u);
    EXPECT_NE(page.find(">root [Cell(x)] Root</div>\n"), std::string::npos) << page;
    EXPECT_NE(
        page.find(
            "    <li><a href=\"#\" onClick=\"return showPane('pane1', this)\" id=\"tab1\">Messages</a></li>\n"
            "    <li><a href=\"#\" onClick=\"return showPane('pane2', this)\">Strings</a></li>\n"),
        std::string::npos);
    EXPECT_NE(
        page.find(
            "<tr> <td>Error[0]</td><td>too cold</td> </tr>\n<tr> <td>Warning[0]</td><td>first</td> </tr>\n"
            "<tr> <td>Warning[1]</td><td>second (3</td> </tr>\n"),
        std::string::npos);
    EXPECT_NE(page.find("<tr> <td>name</td><td>a (b) c</td><td>Name</td></tr>\n"), std::string::npos);
    EXPECT_NE(page.find("<tr> <td>T</td><td>300 K</td><td>Temperature</td></tr>\n"), std::string::npos);
    EXPECT_NE(page.find("<tr> <td><a href=\"2.html\">B</a></td><td>Cell(x)</td><td>Second</td></tr>\n"),
              std::string::npos);
    EXPECT_NE(page.find(std::string("<hr>") + Tarvo::Core::kernelVersion + " @ "), std::string::npos);
    EXPECT_EQ(page.substr(page.size() - 15), "</body></html>\n");
}
