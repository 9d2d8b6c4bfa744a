#include <tarvo/core/SensitivityInputXml.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/WholeInteger.h>

using namespace Tarvo::Core;

namespace {

[[noreturn]] void refuse(const std::string& text) {
    throw ErrorRunTime("SensitivityInputXml", "invalid XML input file, " + text);
}

std::string field(mxml_node_t* sensitivity, const char* name) {
    const std::optional<std::string> text = childText(sensitivity, name);
    if (!text) refuse(std::string("could not read ") + name + " field");
    return *text;
}

int integerField(mxml_node_t* sensitivity, const char* name) {
    const std::optional<int> value = Tarvo::Utility::wholeInteger(field(sensitivity, name));
    if (!value) refuse(std::string("could not read ") + name + " field");
    return *value;
}

double numberAttribute(mxml_node_t* variable, const std::string& tag, const char* name) {
    const std::optional<double> value = finiteNumber(attribute(variable, name));
    if (!value) refuse("variable " + tag + ": " + name + " is not a finite number");
    return *value;
}

// A variable names a quantity by its text.
std::string variableTag(mxml_node_t* variable, const char* list) {
    std::string tag = elementText(variable);
    if (tag.empty()) refuse(std::string("a variable of the ") + list + " variables names no quantity");
    return tag;
}

ControlledVariable controlledVariable(mxml_node_t* variable) {
    const std::string tag = variableTag(variable, "controlled");
    const std::optional<int> points = Tarvo::Utility::wholeInteger(attribute(variable, "points"));
    // The grid would have no point on this axis, or more than the run is meant for.
    if (!points || *points < 1 || *points > 999) refuse("variable " + tag + ": points is not an integer from 1 to 999");
    return ControlledVariable(tag, attribute(variable, "label"), attribute(variable, "unit"),
                              numberAttribute(variable, tag, "start"), numberAttribute(variable, tag, "end"), *points);
}

} // namespace

SensitivityInputXml::SensitivityInputXml(const std::string& file) {
    bool opened = false;
    const XmlTree tree(file, opened);
    if (!opened) throw ErrorRunTime(TARVO_FUNCTION, "error opening file");
    read_(tree);
}

SensitivityInputXml::SensitivityInputXml(const XmlText& text) { read_(XmlTree(text)); }

void SensitivityInputXml::read_(const XmlTree& tree) {
    if (!tree.root()) throw ErrorRunTime(TARVO_FUNCTION, "error opening tree");
    mxml_node_t* sensitivity = findElement(tree.root(), "sensitivity");
    if (!sensitivity) refuse("could not opening sensitivity tree");
    if (mxml_node_t* element = childElement(sensitivity, "name")) name = elementText(element);
    type = field(sensitivity, "type");
    id = integerField(sensitivity, "id");
    order = field(sensitivity, "order");
    const std::optional<double> seconds = finiteNumber(field(sensitivity, "timeout"));
    if (!seconds) refuse("could not read timeout field");
    timeout = *seconds;
    startingRound = integerField(sensitivity, "startinground");
    mxml_node_t* controlledList = childElement(sensitivity, "controlled");
    if (!controlledList) refuse("could not open controlled variables tree");
    mxml_node_t* monitoredList = childElement(sensitivity, "monitored");
    if (!monitoredList) refuse("could not open monitored variables tree");
    for (mxml_node_t* variable : childElements(controlledList, "variable")) controlled.push_back(controlledVariable(variable));
    for (mxml_node_t* variable : childElements(monitoredList, "variable"))
        monitored.push_back({variableTag(variable, "monitored"), attribute(variable, "label"), attribute(variable, "unit")});
    if (rounds() > maximumRounds) refuse("the grid of the controlled variables has more than 1000000 points");
}
