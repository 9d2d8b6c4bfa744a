// The input files of the studies in XML and JSON: what they read, and each refusal with its message.
#include <tarvo/core/HomotopyInputJson.h>
#include <tarvo/core/HomotopyInputXml.h>
#include <tarvo/core/SensitivityInputJson.h>
#include <tarvo/core/SensitivityInputXml.h>
#include <tarvo/utility/Error.h>

#include <json/json.h>

#include <gtest/gtest.h>

#include <functional>
#include <regex>
#include <sstream>

using Tarvo::Core::XmlText;

namespace {

const std::string sensitivityXml = R"(<?xml version="1.0"?>
<study>
  <sensitivity>
    <name>Area &amp; pressure</name>
    <type>Test&lt;Membrane12Rtsc&gt;</type>
    <id> 7 </id>
    <order>boustrophedon</order>
    <timeout>3600</timeout>
    <startinground>0</startinground>
    <controlled>
      <variable start="10" end="40" points="7" unit="m2" label="Area">GM.A</variable>
      <variable start="6" end="8" points="3">FEED.P</variable>
    </controlled>
    <monitored>
      <variable label="Stage cut">GM.stageCut</variable>
      <variable unit="" label="Recovery of CH4">recovery[1]</variable>
    </monitored>
  </sensitivity>
</study>
)";

// The error message of reading `text`, empty when it is accepted.
std::string refusal(const std::function<void()>& read) {
    try {
        read();
    } catch (Error& e) {
        return e.message();
    }
    return "";
}

// The sensitivity input without the line that holds `part`.
std::string without(const std::string& part) {
    return std::regex_replace(sensitivityXml, std::regex(".*" + part + ".*\n"), "");
}

} // namespace

TEST(SensitivityInputXml, ReadsEveryFieldAndVariable) {
    const SensitivityInputXml in{XmlText{sensitivityXml}};
    EXPECT_EQ(in.name, "Area & pressure");
    EXPECT_EQ(in.type, "Test<Membrane12Rtsc>");
    EXPECT_EQ(in.id, 7);
    EXPECT_EQ(in.order, "boustrophedon");
    EXPECT_EQ(in.timeout, 3600.0);
    EXPECT_TRUE(in.defined());
    ASSERT_EQ(in.controlled.size(), 2u);
    EXPECT_TRUE(in.controlled[0] == ControlledVariable("GM.A", "Area", "m2", 10, 40, 7));
    EXPECT_TRUE(in.controlled[1] == ControlledVariable("FEED.P", "", "", 6, 8, 3));
    ASSERT_EQ(in.monitored.size(), 2u);
    EXPECT_EQ(in.monitored[1].fullTag, "recovery[1]");
    EXPECT_EQ(in.monitored[1].label, "Recovery of CH4");
    EXPECT_EQ(in.monitored[0].unit, "");

    // Written as JSON and read back by a JSON reader, the texts and numbers are those of the input.
    std::ostringstream json;
    in.printJson(json);
    Json::Value back;
    std::istringstream(json.str()) >> back;
    EXPECT_EQ(back["name"].asString(), "Area & pressure");
    EXPECT_EQ(back["startinground"].asInt(), 0);
    EXPECT_EQ(back["controlled"][0]["points"].asInt(), 7);
    EXPECT_EQ(back["monitored"][1]["variable"].asString(), "recovery[1]");
}

TEST(SensitivityInputXml, EachMissingPartIsRefusedByName) {
    const auto read = [](const std::string& text) { return refusal([&] { SensitivityInputXml{XmlText{text}}; }); };
    const std::pair<std::string, std::string> rows[] = {
        {"<type>", "invalid XML input file, could not read type field"},
        {"<id>", "invalid XML input file, could not read id field"},
        {"<order>", "invalid XML input file, could not read order field"},
        {"<timeout>", "invalid XML input file, could not read timeout field"},
        {"<startinground>", "invalid XML input file, could not read startinground field"},
    };
    for (const auto& [line, message] : rows) EXPECT_NE(read(without(line)).find(message), std::string::npos) << line;
    EXPECT_EQ(read(without("<name>")), ""); // the one optional field
    EXPECT_NE(read(std::regex_replace(sensitivityXml, std::regex("</?controlled>"), "")).find(
                  "invalid XML input file, could not open controlled variables tree"),
              std::string::npos);
    EXPECT_NE(read(std::regex_replace(sensitivityXml, std::regex("</?monitored>"), "")).find(
                  "invalid XML input file, could not open monitored variables tree"),
              std::string::npos);
    EXPECT_NE(read("<study><other/></study>").find("invalid XML input file, could not opening sensitivity tree"),
              std::string::npos);
    EXPECT_NE(read("<sensitivity><type>x</sensitivity>").find("error opening tree"), std::string::npos);
    EXPECT_NE(refusal([] { SensitivityInputXml("/nonexistent/SensitivityInput.xml"); }).find("error opening file"),
              std::string::npos);
    // Fields and attributes that are there but do not read.
    EXPECT_NE(read(std::regex_replace(sensitivityXml, std::regex("> 7 <"), ">7x<")).find("could not read id field"),
              std::string::npos);
    EXPECT_NE(read(std::regex_replace(sensitivityXml, std::regex("points=\"7\""), "points=\"1000\"")).find(
                  "variable GM.A: points is not an integer from 1 to 999"),
              std::string::npos);
    EXPECT_NE(read(std::regex_replace(sensitivityXml, std::regex("end=\"40\""), "end=\"NaN\"")).find(
                  "variable GM.A: end is not a finite number"),
              std::string::npos);
    EXPECT_NE(read(std::regex_replace(sensitivityXml, std::regex(">GM.stageCut<"), "><")).find(
                  "a variable of the monitored variables names no quantity"),
              std::string::npos);
}

TEST(SensitivityInputJson, ReadsTheInputAndRefusesWhatIsNotOne) {
    const std::string text = R"({"name":"n","type":"Curve","id":3,"order":"quasi-spiral","timeout":1.5,"startingRound":1,
        "controlled":[{"variable":"x","label":"X","unit":"bar","start":1,"end":2,"points":2}],
        "monitored":[{"variable":"y"}]})";
    const SensitivityInputJson in(text);
    EXPECT_EQ(in.id, 3);
    EXPECT_EQ(in.startingRound, 1);
    EXPECT_TRUE(in.controlled.at(0) == ControlledVariable("x", "X", "bar", 1, 2, 2));
    EXPECT_EQ(in.monitored.at(0).fullTag, "y");

    const auto read = [](const std::string& t) { return refusal([&] { SensitivityInputJson{t}; }); };
    const std::pair<std::string, std::string> rows[] = {
        {"[]", "Failed to parse sensitivity input: the input is not a JSON object"},
        {"{\"type\":", "Failed to parse sensitivity input: "},
        {std::regex_replace(text, std::regex("startingRound"), "startinground"), "unknown key startinground"},
        {std::regex_replace(text, std::regex("\"id\":3"), "\"id\":\"3\""), "id of the input is not an integer"},
        {std::regex_replace(text, std::regex("\"points\":2"), "\"points\":0"), "points of a controlled variable is not from 1 to 999"},
        {std::regex_replace(text, std::regex("\"end\":2"), "\"end\":1e999"), "'1e999' is not a number"},
        {std::regex_replace(text, std::regex(",\"timeout\":1.5"), ""), "the input has no timeout"},
        {std::regex_replace(text, std::regex("\\{\"variable\":\"y\"\\}"), "3"), "a monitored variable is not a JSON object"},
        {text + "x", "Failed to parse sensitivity input: "},
        // 101 points on each of three axes: 1030301 rounds.
        {std::regex_replace(text, std::regex("\"points\":2\\}"),
                            "\"points\":101},{\"variable\":\"a\",\"start\":0,\"end\":1,\"points\":101},"
                            "{\"variable\":\"b\",\"start\":0,\"end\":1,\"points\":101}"),
         "the grid of the controlled variables has more than 1000000 points"},
    };
    for (const auto& [input, message] : rows) EXPECT_NE(read(input).find(message), std::string::npos) << input;
}

TEST(HomotopyInputXml, ReadsTheInputAndRefusesMissingFields) {
    const std::string xml = R"(<homotopy><type>Test</type><id>4</id><points>10</points>
        <controlled><variable start="20" end="200">GM.A</variable><variable start="1" end="1">FEED.T</variable></controlled>
        </homotopy>)";
    const HomotopyInputXml in{XmlText{xml}};
    EXPECT_EQ(in.type, "Test");
    EXPECT_EQ(in.id, 4);
    EXPECT_EQ(in.points, 10);
    ASSERT_EQ(in.controlled.size(), 2u);
    EXPECT_EQ(in.controlled[0].fullTag, "GM.A");
    EXPECT_EQ(in.controlled[0].end, 200.0);

    const auto read = [](const std::string& t) { return refusal([&] { HomotopyInputXml{XmlText{t}}; }); };
    const auto cut = [&](const std::string& part) { return std::regex_replace(xml, std::regex(part), ""); };
    EXPECT_NE(read(cut("<type>Test</type>")).find("invalid XML input file, could not read type field"), std::string::npos);
    EXPECT_NE(read(cut("<id>4</id>")).find("invalid XML input file, could not read id field"), std::string::npos);
    EXPECT_NE(read(cut("<points>10</points>")).find("invalid XML input file, could not read id field"), std::string::npos);
    EXPECT_NE(read(cut("</?controlled>")).find("invalid XML input file, could not open controlled variables tree"),
              std::string::npos);
    EXPECT_NE(read(cut("end=\"200\"")).find("variable GM.A: end is not a finite number"), std::string::npos);

    // A file that cannot be opened or parsed, or has no homotopy, leaves the input empty and says so.
    for (const auto& [source, message] : std::vector<std::pair<std::string, std::string>>{
             {"/nonexistent/Homotopy.xml", "error opening file /nonexistent/Homotopy.xml\n"}}) {
        testing::internal::CaptureStderr();
        const HomotopyInputXml empty(source);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), message);
        EXPECT_EQ(empty.points, 0);
    }
    for (const auto& [text, message] : std::vector<std::pair<std::string, std::string>>{
             {"<homotopy></other>", "error opening tree\n"}, {"<other/>", "error opening homotopy\n"}}) {
        testing::internal::CaptureStderr();
        const HomotopyInputXml empty{XmlText{text}};
        EXPECT_NE(testing::internal::GetCapturedStderr().find(message), std::string::npos) << text;
        EXPECT_TRUE(empty.controlled.empty());
    }
}

TEST(HomotopyInputJson, ReadsTheInputAndRefusesWhatIsNotOne) {
    const HomotopyInputJson in(R"({"type":"T","id":0,"points":2,"controlled":[{"variable":"x","start":1,"end":2}]})");
    EXPECT_EQ(in.points, 2);
    EXPECT_EQ(in.controlled.at(0).start, 1.0);
    EXPECT_NE(refusal([] { HomotopyInputJson(R"({"type":"T","id":0,"points":2})"); })
                  .find("Failed to parse homotopy input: the input has no controlled"),
              std::string::npos);
    EXPECT_NE(refusal([] { HomotopyInputJson(R"({"type":"T","id":0,"points":2,"controlled":[{"variable":"x","start":1}]})"); })
                  .find("a controlled variable has no end"),
              std::string::npos);
}
