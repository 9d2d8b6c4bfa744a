#include "LayoutGraph.h"

#include <tarvo/core/KernelStart.h>
#include <tarvo/flowsheet/Layout.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <unistd.h>

namespace {

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t n = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

// A mixer fed twice and by a recycle, a heater, a flash drum with its vapour on top and its liquid below,
// and a splitter whose second outlet closes the loop through a cut; documents go to a folder of the test's
// own.
class LayoutSvgTest : public ::testing::Test {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        char pattern[] = "/tmp/tarvo-layout-XXXXXX";
        folder_ = mkdtemp(pattern);
        plant_ = std::make_unique<LayoutGraph>();
        plant_->unit("MIX", "mixer", 40.0, 40.0);
        plant_->unit("HEAT", "exchanger", 50.0, 30.0);
        plant_->unit("FLASH", "flash", 40.0, 80.0, {{"out1", VertexBase::north}, {"out2", VertexBase::south}});
        plant_->unit("SPLIT", "splitter", 40.0, 40.0);
        plant_->stream("FEED1", "source", "out1", "MIX", "in1");
        plant_->stream("FEED2", "source", "out2", "MIX", "in2");
        plant_->stream("S03", "MIX", "out1", "HEAT", "in1");
        plant_->stream("S04", "HEAT", "out1", "FLASH", "in1");
        plant_->stream("VAPOUR", "FLASH", "out1", "sink", "in1");
        plant_->stream("LIQUID", "FLASH", "out2", "SPLIT", "in1");
        plant_->stream("PRODUCT", "SPLIT", "out1", "sink", "in2");
        // The recycle is cut as a flowsheet cuts it: into the sink, and its copy from the source.
        plant_->stream("RECYCLE", "SPLIT", "out2", "sink", "in3");
        plant_->stream("RECYCLEbis", "source", "out3", "MIX", "in3");
    }
    void TearDown() override {
        plant_.reset();
        std::filesystem::remove_all(folder_);
        Tarvo::Core::stopKernel();
    }

    std::string flowsheet(bool tiny, bool raster) const {
        std::ostringstream out;
        Layout::printFlowsheet(plant_->graph(), {{"RECYCLE", "RECYCLEbis"}}, out, tiny, raster);
        return out.str();
    }
    // With the frames of a verbose log.
    std::string verbose(const Graph& graph, bool tiny) const {
        Layout layout(graph);
        EXPECT_TRUE(layout.closeCut("RECYCLE", "RECYCLEbis"));
        layout.setVerbosityInstance(10);
        layout.calculateEdgeLines();
        std::ostringstream out;
        if (tiny)
            layout.printSvgTiny(out, false);
        else
            layout.printSvg(out, false);
        return out.str();
    }
    static std::string plain(const Graph& graph, bool tiny) {
        Layout layout(graph);
        layout.calculateEdgeLines();
        std::ostringstream out;
        if (tiny)
            layout.printSvgTiny(out, false);
        else
            layout.printSvg(out, false);
        return out.str();
    }
    std::string write(const std::string& name, const std::string& text) const {
        const std::string path = folder_ + "/" + name;
        std::ofstream(path) << text;
        return path;
    }

    std::unique_ptr<LayoutGraph> plant_; // after the kernel's start: units need components
    std::string folder_;
};

} // namespace

TEST_F(LayoutSvgTest, EveryDocumentIsWellFormedXml) {
    if (std::system("command -v xmllint > /dev/null 2>&1") != 0)
        GTEST_SKIP() << "xmllint is not installed (Debian package libxml2-utils): well-formedness not checked";
    const Graph empty;
    testing::internal::CaptureStdout(); // the layer lists of the verbose drawings
    const std::vector<std::pair<std::string, std::string>> documents{
        {"flowsheet.svg", flowsheet(false, false)},     {"flowsheet-tiny.svg", flowsheet(true, true)},
        {"verbose.svg", verbose(plant_->graph(), false)}, {"verbose-tiny.svg", verbose(plant_->graph(), true)},
        {"empty.svg", plain(empty, false)},              {"empty-tiny.svg", plain(empty, true)}};
    testing::internal::GetCapturedStdout();
    for (const auto& [name, text] : documents) {
        const std::string command = "xmllint --noout " + write(name, text) + " 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0) << name << ":\n" << text;
    }
}

TEST_F(LayoutSvgTest, FullProfileDrawsWithStyleClassesAndMarkers) {
    const std::string svg = flowsheet(false, false);
    EXPECT_EQ(svg.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\"", 0), 0u);
    EXPECT_NE(svg.find("<svg version=\"1.1\" xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\""),
              std::string::npos);
    EXPECT_NE(svg.find("viewBox=\"-20 -20 "), std::string::npos); // the padding of flowsheets
    EXPECT_NE(svg.find(".edge-pad { fill: none; stroke-width: 4; stroke: gray; }"), std::string::npos);
    EXPECT_NE(svg.find(".style0 { stroke: blue; stroke-width: 2; }"), std::string::npos);
    EXPECT_NE(svg.find("<marker id=\"arrowhead-forward\" refX=\"0\""), std::string::npos);
    EXPECT_NE(svg.find("<marker id=\"arrowhead-backward\" refX=\"16\" refY=\"6\" markerWidth=\"16\" markerHeight=\"12\""),
              std::string::npos);
    EXPECT_NE(svg.find("<feMorphology operator=\"dilate\" radius=\"2\"/>"), std::string::npos);
    EXPECT_EQ(count(svg, "class=\"edge backward style0\""), 1u);
    EXPECT_EQ(count(svg, "class=\"edge forward style0\""), 7u);
    EXPECT_EQ(count(svg, "class=\"edge-pad\""), 8u);
    EXPECT_NE(svg.find("xlink:href=\"/static/flash.svg\""), std::string::npos);
    EXPECT_NE(svg.find("data-type=\"LayoutUnit&lt;mixer&gt;\""), std::string::npos);
    EXPECT_EQ(count(svg, ">FLASH</text>"), 2u); // pad and letters
    EXPECT_EQ(svg.find("#e1ffff"), std::string::npos); // no frames without a verbose log
    EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");

    // The printed lines keep their right angles: each corner shares x or y with the one before.
    const std::regex path("<path id=\"edge\\d+\" d=\"([^\"]*)\"/>");
    std::size_t paths = 0;
    for (auto it = std::sregex_iterator(svg.begin(), svg.end(), path); it != std::sregex_iterator(); ++it, ++paths) {
        std::istringstream d((*it)[1].str());
        std::string command;
        double x0, y0, x, y;
        d >> command >> x0 >> y0;
        EXPECT_EQ(command, "M");
        while (d >> command >> x >> y) {
            EXPECT_EQ(command, "L");
            EXPECT_TRUE(x == x0 || y == y0) << (*it)[1];
            x0 = x;
            y0 = y;
        }
    }
    EXPECT_EQ(paths, 8u);
}

TEST_F(LayoutSvgTest, TinyProfileCarriesItsAttributesOnEveryElement) {
    const std::string svg = flowsheet(true, true);
    EXPECT_NE(svg.find("<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1 Tiny//EN\""), std::string::npos);
    EXPECT_NE(svg.find("<svg version=\"1.1\" baseProfile=\"tiny\""), std::string::npos);
    for (const char* absent : {"<style", "<marker", "<filter", "class="}) EXPECT_EQ(svg.find(absent), std::string::npos) << absent;
    EXPECT_EQ(count(svg, "<path id=\"arrow\" stroke-width=\"0\" d=\"M 0 0 L 0 12 L 16 6 Z\" />"), 1u);
    EXPECT_EQ(count(svg, "<use xlink:href=\"#arrow\" fill=\"blue\" transform=\"translate("), 8u);
    const std::regex line("<path id=\"a\\d+\" ");
    EXPECT_EQ(std::distance(std::sregex_iterator(svg.begin(), svg.end(), line), std::sregex_iterator()), 8);
    EXPECT_EQ(count(svg, "fill=\"none\" stroke-width=\"2\" stroke=\"blue\""), 8u);
    // Raster drawings take the icons' pictures in PNG.
    EXPECT_NE(svg.find("xlink:href=\"/static/mixer.png\""), std::string::npos);
    EXPECT_EQ(svg.find(".svg\""), std::string::npos);
    // The units' tags, and those of the vapour, which spans a column, and of the recycle.
    EXPECT_EQ(count(svg, "<text text-anchor=\"middle\" fill=\"black\" font-size=\"15\""), 4u + 2u);
}

TEST_F(LayoutSvgTest, VerboseLogListsTheLayersAndAddsFrames) {
    testing::internal::CaptureStdout();
    const std::string svg = verbose(plant_->graph(), false);
    const std::string log = testing::internal::GetCapturedStdout();
    EXPECT_NE(log.find("Layer 0"), std::string::npos);
    EXPECT_NE(log.find("  Vertex NormalVertex[FLASH]"), std::string::npos);
    EXPECT_NE(log.find("  Vertex EdgeLabelDummy[RECYCLE]"), std::string::npos);
    EXPECT_EQ(count(svg, "fill=\"#e1ffff\""), 1u);
    EXPECT_EQ(count(svg, "fill=\"#b2ffff\""), 1u);
    EXPECT_EQ(count(svg, "<rect class=\"icon-border\""), 4u);
    EXPECT_EQ(count(svg, "stroke=\"red\""), 6u); // source, mixer, heater, flash, splitter and sink columns
}

TEST_F(LayoutSvgTest, EmptyGraphGivesADocumentWithoutBody) {
    const Graph empty;
    for (bool tiny : {false, true}) {
        const std::string svg = plain(empty, tiny);
        EXPECT_NE(svg.find("width=\"0\" height=\"0\" viewBox=\"0 0 0 0\""), std::string::npos) << svg;
        for (const char* absent : {"<g ", "<image", "<text", "<use"}) EXPECT_EQ(svg.find(absent), std::string::npos) << absent;
    }
}
