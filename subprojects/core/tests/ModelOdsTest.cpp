// The spreadsheet report of a tree of test models: flowsheets, streams with their phases, and units that
// hold what a stream holds but are no streams by their type.
#include <tarvo/core/KernelStart.h>
#include <tarvo/core/Model.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::Category;

namespace {

// A plant, or a stream, unit or phase by the quantities that it is given; the report goes by type and tag.
class Part : public Model {
public:
    using Model::Model;
    Category category() const override { return Category::unit; }
    void calculate(int) override {}
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }
};

// Registered under stream types and under others, so that only the type tells them apart.
class Pipe : public Part {
public:
    Pipe(const Defaults& d, uint32_t id, Persistency* p, Persistent* parent, Persistent* root)
        : Part(d, id, p, parent, root) {
        addVariable(P);
        addVariable(T);
    }
    Quantity P{"P", "Pressure", "Pa", this, 101325.0};
    Quantity T{"T", "Temperature", "K", this, 298.15};
};

class Phase : public Part {
public:
    Phase(const Defaults& d, uint32_t id, Persistency* p, Persistent* parent, Persistent* root)
        : Part(d, id, p, parent, root) {
        addVariable(fraction);
        addVariable(mdot);
        addVariable(w);
    }
    Quantity fraction{"fraction", "phase fraction", "", this, 1.0};
    Quantity mdot{"mdot", "mass flow", "kg/h", this, 3600.0};
    QuantityVector w{"w", "mass fraction", 2, Value(0.5), this}; // vectors have no columns
};

class SpreadsheetReport : public ::testing::Test {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        if (!NodeFactory::registered("Plant")) {
            NodeFactory::registerType<Part>("Plant", "Test plant", "flowsheet", true, {}, {}, {}, "", 1, 1);
            NodeFactory::registerType<Phase>("PhaseIdeal<vapor>", "Test phase", "phase", false, {}, {}, {}, "", 1, 1);
            for (const char* type : {"StreamIdealLiquidVapor", "StreamOne<PhaseIdeal>", "Terminator", "FeedStream"})
                NodeFactory::registerType<Pipe>(type, "Test pipe", "stream", false, {}, {}, {}, "", 1, 1);
        }
        char pattern[] = "/tmp/tarvo-ods-XXXXXX";
        dir_ = mkdtemp(pattern);
    }
    void TearDown() override {
        std::filesystem::remove_all(dir_);
        Tarvo::Core::stopKernel();
    }

    static std::unique_ptr<Model> plant(const std::string& tag, const std::string& description) {
        return std::unique_ptr<Model>(
            my_cast<Model*>(NodeFactory::create("Plant", {tag, description}, 0, nullptr, nullptr, nullptr), "test"));
    }
    // A stream-like child at P and T with a total phase and the other phases named.
    static void addPipe(Node& parent, const std::string& type, const std::string& tag, double P, double T,
                         const std::vector<std::string>& phases = {}) {
        auto& pipe = dynamic_cast<Pipe&>(parent.addChild(type, {tag, "Pipe " + tag}));
        pipe.P = Value(P, "Pa");
        pipe.T = Value(T, "K");
        pipe.addChild("PhaseIdeal<vapor>", {"Tphase", "Total phase"});
        for (const std::string& phase : phases)
            pipe.addChild("PhaseIdeal<vapor>", {phase, "Phase " + phase});
    }
    // The document of `model`, as exportOds leaves it in a file.
    std::string document(const Model& model) const {
        {
            std::ofstream out(path());
            model.printOds(out);
        }
        std::ifstream in(path());
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
    std::string path() const { return dir_ + "/content.xml"; }
    // What a reader of the table sees: each row's cells, a number or a text as written, an empty cell as "".
    static std::vector<std::vector<std::string>> table(const std::string& document) {
        static const std::regex cell(R"re(      <table:table-cell(?:><text:p>(.*)</text:p></table:table-cell>|)re"
                                     R"re( office:value-type="float" office:value="(.*)"/>|/>))re");
        std::vector<std::vector<std::string>> rows;
        std::istringstream lines(document);
        std::smatch match;
        for (std::string line; std::getline(lines, line);) {
            if (line == "    <table:table-row>")
                rows.emplace_back();
            else if (std::regex_match(line, match, cell))
                rows.back().push_back(match[1].str() + match[2].str());
        }
        return rows;
    }
    static void expectWellFormed(const std::string& file) {
        const std::string command = "xmllint --noout " + file;
        EXPECT_EQ(std::system(command.c_str()), 0)
            << command << " fails; xmllint is in the Debian package libxml2-utils";
    }

    std::string dir_;
};

} // namespace

TEST_F(SpreadsheetReport, AModelWithoutStreamsGivesAnEmptyTable) {
    std::unique_ptr<Model> root = plant("F1", "No streams");
    addPipe(root->addChild("Plant", {"Sub", "Inner plant"}), "Terminator", "End", 1e5, 300.0);
    EXPECT_EQ(document(*root), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                               "<office:document-content \n"
                               "    xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\"\n"
                               "    xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\"\n"
                               "    xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\"\n"
                               "    office:version=\"1.1\">\n"
                               " <office:body>\n"
                               "  <office:spreadsheet>\n"
                               "   <table:table table:name=\"Tabella1\" table:print=\"false\">\n"
                               "   </table:table>\n"
                               "  </office:spreadsheet>\n"
                               " </office:body>\n"
                               "</office:document-content>\n");
    expectWellFormed(path());
}

// The root has no streams of its own: the first stream lies two levels down, and the header still comes
// first, once. Tags sort the sub-flowsheets ahead of the streams, yet a flowsheet's streams come ahead of
// those of its sub-flowsheets. Only a type that begins with "Stream" makes a stream. The total phase fills
// the stream's row whatever its tag's place among the phases, the others follow in rows of their own; numbers
// are in SI, the units of the headings, with the twelve digits of the other reports.
TEST_F(SpreadsheetReport, StreamsDepthFirstWithRowsWithoutGapsUnderOneHeader) {
    std::unique_ptr<Model> root = plant("F1", "Nested plants");
    Node& a = root->addChild("Plant", {"A", "First section"});
    addPipe(a.addChild("Plant", {"A1", "Inner section"}), "StreamIdealLiquidVapor", "S9", 1e5, 300.0,
            {"Lphase", "Vphase"});
    addPipe(a, "StreamOne<PhaseIdeal>", "S5", 1e5, 300.0);
    addPipe(a, "StreamIdealLiquidVapor", "S4", 2.5e5, 350.0, {"Vphase"});
    addPipe(a, "Terminator", "T1", 1e5, 300.0, {"Vphase"});
    addPipe(a, "FeedStream", "F2", 1e5, 300.0);
    addPipe(root->addChild("Plant", {"B", "Second section"}), "StreamIdealLiquidVapor", "S1", 1e5, 300.0);
    auto& vapor = dynamic_cast<Phase&>(root->at("A:S4:Vphase"));
    vapor.fraction = Value(0.25);
    vapor.mdot = Value(1000.0, "kg/h");

    const std::vector<std::vector<std::string>> rows = table(document(*root));
    ASSERT_EQ(rows.size(), 8u);
    EXPECT_EQ(rows[0], (std::vector<std::string>{"Id", "Row", "Complete tag", "Description", "Type",
                                                 "Pressure [Pa]", "Temperature [K]", "Phase tag", "fraction []",
                                                 "mdot [kg s^-1]"}));
    std::vector<std::string> numbers, tags;
    for (std::size_t i = 1; i < rows.size(); ++i) {
        ASSERT_EQ(rows[i].size(), rows[0].size()) << "row " << i;
        numbers.push_back(rows[i][1]);
        tags.push_back(rows[i][2]);
    }
    EXPECT_EQ(numbers, (std::vector<std::string>{"1", "2", "3", "4", "5", "6", "7"}));
    EXPECT_EQ(tags, (std::vector<std::string>{"F1:A:S4", "F1:A:S4:Vphase", "F1:A:S5", "F1:A:A1:S9",
                                              "F1:A:A1:S9:Lphase", "F1:A:A1:S9:Vphase", "F1:B:S1"}));
    const auto id = [&](const std::string& path) { return std::to_string(root->at(path).id()); };
    EXPECT_EQ(rows[1], (std::vector<std::string>{id("A:S4"), "1", "F1:A:S4", "Pipe S4", "StreamIdealLiquidVapor",
                                                 "250000", "350", "Tphase", "1", "1"}));
    EXPECT_EQ(rows[2], (std::vector<std::string>{id("A:S4:Vphase"), "2", "F1:A:S4:Vphase", "", "", "", "",
                                                 "Vphase", "0.25", "0.277777777778"}));
    EXPECT_EQ(rows[3][4], "StreamOne(PhaseIdeal)");
    expectWellFormed(path());
}

// A model whose type makes it a stream must have the total phase that fills its row; without it the report
// stops with the name of what is missing, which the facade turns into its error code.
TEST_F(SpreadsheetReport, AStreamWithoutItsTotalPhaseIsAnError) {
    std::unique_ptr<Model> root = plant("F1", "Broken plant");
    root->addChild("StreamIdealLiquidVapor", {"S1", "Pipe without phases"});
    std::ofstream out(path());
    try {
        root->printOds(out);
        ADD_FAILURE() << "no error";
    } catch (Error& e) {
        EXPECT_NE(e.message().find("non-existant tag Tphase"), std::string::npos) << e.message();
    }
}
