#include "FlowsheetFixtures.h"

#include <tarvo/streams/Stream.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

std::string readFile(const std::string& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t n = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

bool wellFormed(const std::string& file) {
    const std::string command = "xmllint --noout " + file + " 2>&1";
    return std::system(command.c_str()) == 0;
}

} // namespace

// The plant and the loop inside it each get a picture named by its identifier in the store; the loop's cut is
// drawn as the recycle it opens, and the loop keeps its cut for the next calculation.
TEST_F(FlowsheetTest, PicturesOfAPlantAndOfTheLoopInsideIt) {
    auto plant = make<PlantSheet>("TestPlant");
    auto& loop = dynamic_cast<FlowSheet&>(plant->child("G"));
    const int stored = 100; // the plant's identifier in the store
    const std::string loopFile = "./" + std::to_string(stored + loop.id() - plant->id()) + ".svg";
    std::vector<std::string> names;
    plant->printSvgAll(".", false, false, stored, names);
    EXPECT_EQ(names, (std::vector<std::string>{"./100.svg", loopFile}));

    const std::string outer = readFile("100.svg");
    EXPECT_EQ(count(outer, "<image "), 1u); // the loop stands in the plant as one unit
    EXPECT_NE(outer.find("xlink:href=\"/static/flowsheet.svg\""), std::string::npos);
    EXPECT_EQ(count(outer, "class=\"edge forward"), 2u);
    EXPECT_EQ(count(outer, ">G</text>"), 2u); // pad and letters

    const std::string inner = readFile(loopFile);
    EXPECT_EQ(count(inner, "<image "), 2u);
    EXPECT_EQ(count(inner, "xlink:href=\"/static/unit.svg\""), 2u);
    EXPECT_EQ(count(inner, "class=\"edge backward"), 1u);
    EXPECT_EQ(count(inner, "class=\"edge forward"), 3u);
    EXPECT_EQ(count(inner, ">REC</text>"), 2u); // pad and letters
    EXPECT_EQ(inner.find("RECbis"), std::string::npos);

    auto& rec = dynamic_cast<Stream&>(loop.child("REC"));
    EXPECT_TRUE(loop.hasChild("RECbis"));
    EXPECT_EQ(rec.toTAG.value(), "sink");
    plant->calculate(0);
    EXPECT_TRUE(plant->errorList().empty());
    EXPECT_NEAR(flow(*plant, "PROD", 0), 1440.0, 1e-6);

    if (std::system("command -v xmllint > /dev/null 2>&1") != 0)
        GTEST_SKIP() << "xmllint is not installed (Debian package libxml2-utils): well-formedness not checked";
    for (const std::string& name : names) EXPECT_TRUE(wellFormed(name)) << name << "\n" << readFile(name);
}

// The tiny profile with raster icons, the picture of a plain unit, and a folder that is not there.
TEST_F(FlowsheetTest, TinyPicturesIconsOfUnitsAndFoldersThatAreNotThere) {
    auto loop = make<LoopSheet>("TestLoop");
    std::vector<std::string> names;
    loop->printSvgAll(".", true, true, 7, names);
    ASSERT_EQ(names, std::vector<std::string>{"./7.svg"});
    const std::string tiny = readFile("7.svg");
    EXPECT_NE(tiny.find("baseProfile=\"tiny\""), std::string::npos);
    EXPECT_EQ(count(tiny, "xlink:href=\"/static/unit.png\""), 2u);
    EXPECT_EQ(tiny.find("<style"), std::string::npos);

    auto& mixer = dynamic_cast<Model&>(loop->child("MIX"));
    mixer.printSvg("mixer.svg", false, false, 1);
    const std::string icon = readFile("mixer.svg");
    EXPECT_NE(icon.find("width=\"40\" height=\"40\" viewBox=\"0 0 40 40\""), std::string::npos) << icon;
    EXPECT_NE(icon.find("<image x=\"0\" y=\"0\" width=\"40\" height=\"40\" xlink:href=\"/static/unit.svg\"/>"),
              std::string::npos)
        << icon;

    const std::string missing = thrown([&] { loop->printSvgAll("no/such/folder", false, false, 7, names); });
    EXPECT_NE(missing.find("can not write to no/such/folder/7.svg"), std::string::npos) << missing;
    EXPECT_NE(thrown([&] { mixer.printSvg("no/such/folder/m.svg", true, false, 0); })
                  .find("can not write to no/such/folder/m.svg"),
              std::string::npos);

    if (std::system("command -v xmllint > /dev/null 2>&1") != 0)
        GTEST_SKIP() << "xmllint is not installed (Debian package libxml2-utils): well-formedness not checked";
    EXPECT_TRUE(wellFormed("7.svg")) << tiny;
    EXPECT_TRUE(wellFormed("mixer.svg")) << icon;
}
