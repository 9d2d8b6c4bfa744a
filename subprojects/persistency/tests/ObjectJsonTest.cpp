#include "TestTree.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

namespace {

// The golden file in the tests' folder; with TARVO_UPDATE_GOLDEN set, `text` replaces it. The folder comes from
// the build: a compiler cache may hand the compiler relative paths, and then __FILE__ is relative too.
std::string golden(const std::string& name, const std::string& text) {
    const auto path = std::filesystem::path(TARVO_PERSISTENCY_GOLDEN_DIR) / name;
    if (std::getenv("TARVO_UPDATE_GOLDEN")) std::ofstream(path) << text;
    std::ifstream in(path);
    std::stringstream expected;
    expected << in.rdbuf();
    return expected.str();
}

std::string json(const Node& node, int level) {
    std::ostringstream out;
    node.printJson(out, level);
    return out.str();
}

} // namespace

// Every section, in its order: I, IV, Q, QV, QM (closed right behind its entry), S, SV, children; a node
// with one entry in a map ("stages") has no comma in that section.
TEST(JsonReport, TreeWithEveryKindOfItemMatchesItsGoldenFile) {
    std::unique_ptr<Plant> plant(newPlant());
    const std::string text = json(*plant, 0);
    EXPECT_EQ(text, golden("plant.json", text));
}

TEST(JsonReport, NodesWithoutItems) {
    registerTestTree();
    Node bare({"bare", "No items"}, 0, nullptr, nullptr, nullptr);
    EXPECT_EQ(json(bare, 0),
              "{\n  \"fullTag\": \"bare\",\n  \"type\": \"Node\",\n  \"id\": 0,\n  \"parent\": 0\n}");
    // The children of a node without items end on a brace with a blank behind it.
    bare.addChild("Stage", {"S", "Stage"});
    const std::string text = json(bare, 1);
    EXPECT_EQ(
        text.rfind(
            "{\n    \"fullTag\": \"bare\",\n    \"type\": \"Node\",\n    \"id\": 0,\n    \"parent\": 0,\n"
            "    \"children\": {\n      \"S\": {\n        \"fullTag\": \"bare:S\",\n",
            0),
        0u)
        << text;
    EXPECT_EQ(text.substr(text.size() - 19), "\n      }\n    } \n  }");
}

TEST(JsonReport, AnObjectWithoutItemsHasOnlyTheFourKeys) {
    registerTestTree();
    Object empty({"e", ""}, 4, nullptr, nullptr, nullptr);
    EXPECT_EQ(json(empty, 0),
              "{\n  \"fullTag\": \"e\",\n  \"type\": \"Object\",\n  \"id\": 4,\n  \"parent\": 4\n}");
}

TEST(JsonReportDeathTest, NegativeLevelIsADefect) {
    std::unique_ptr<Plant> plant(newPlant());
    std::ostringstream out;
    EXPECT_DEATH(plant->printJson(out, -1), "level >= 0");
}
