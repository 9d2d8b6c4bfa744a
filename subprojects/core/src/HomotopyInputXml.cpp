#include <tarvo/core/HomotopyInputXml.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/WholeInteger.h>

#include <iostream>

using namespace Tarvo::Core;

namespace {

[[noreturn]] void refuse(const std::string& text) {
    throw ErrorRunTime("HomotopyInputXml", "invalid XML input file, " + text);
}

int integerField(mxml_node_t* homotopy, const char* name) {
    const std::optional<std::string> text = childText(homotopy, name);
    const std::optional<int> value = text ? Tarvo::Utility::wholeInteger(*text) : std::nullopt;
    // Both fields share the message of the file format.
    if (!value) refuse("could not read id field");
    return *value;
}

double bound(mxml_node_t* variable, const std::string& tag, const char* name) {
    const std::optional<double> value = finiteNumber(attribute(variable, name));
    if (!value) refuse("variable " + tag + ": " + name + " is not a finite number");
    return *value;
}

} // namespace

HomotopyInputXml::HomotopyInputXml(const std::string& file) {
    bool opened = false;
    const XmlTree tree(file, opened);
    if (!opened) {
        std::cerr << "error opening file " << file << "\n";
        return;
    }
    read_(tree);
}

HomotopyInputXml::HomotopyInputXml(const XmlText& text) { read_(XmlTree(text)); }

void HomotopyInputXml::read_(const XmlTree& tree) {
    if (!tree.root()) {
        std::cerr << "error opening tree\n";
        return;
    }
    mxml_node_t* homotopy = findElement(tree.root(), "homotopy");
    if (!homotopy) {
        std::cerr << "error opening homotopy\n";
        return;
    }
    const std::optional<std::string> typeText = childText(homotopy, "type");
    if (!typeText) refuse("could not read type field");
    type = *typeText;
    id = integerField(homotopy, "id");
    points = integerField(homotopy, "points");
    mxml_node_t* list = childElement(homotopy, "controlled");
    if (!list) refuse("could not open controlled variables tree");
    for (mxml_node_t* variable : childElements(list, "variable")) {
        const std::string tag = elementText(variable);
        if (tag.empty()) refuse("a variable of the controlled variables names no quantity");
        controlled.push_back({tag, bound(variable, tag, "start"), bound(variable, tag, "end")});
    }
}
