#include <tarvo/core/XmlInput.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>

namespace Tarvo::Core {

namespace {

std::string trimmed(const std::string& text) {
    const char* blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace

// The document is read under a node of our own, which holds every node that the parser makes: a text that
// fails half way leaves nodes that the parser does not free, and deleting this node frees them.
XmlTree::XmlTree(const std::string& file, bool& opened) : root_(mxmlNewElement(MXML_NO_PARENT, "document")) {
    const std::unique_ptr<FILE, int (*)(FILE*)> in(std::fopen(file.c_str(), "r"), &std::fclose);
    opened = in != nullptr;
    parsed_ = opened && mxmlLoadFile(root_, in.get(), MXML_OPAQUE_CALLBACK) != nullptr;
}

XmlTree::XmlTree(const XmlText& text) : root_(mxmlNewElement(MXML_NO_PARENT, "document")) {
    parsed_ = mxmlLoadString(root_, text.text.c_str(), MXML_OPAQUE_CALLBACK) != nullptr;
}

XmlTree::~XmlTree() { mxmlDelete(root_); }

mxml_node_t* findElement(mxml_node_t* node, const char* name) {
    return mxmlFindElement(node, node, name, nullptr, nullptr, MXML_DESCEND);
}

mxml_node_t* childElement(mxml_node_t* node, const char* name) {
    return mxmlFindElement(node, node, name, nullptr, nullptr, MXML_DESCEND_FIRST);
}

std::vector<mxml_node_t*> childElements(mxml_node_t* node, const char* name) {
    std::vector<mxml_node_t*> elements;
    for (mxml_node_t* e = childElement(node, name); e; e = mxmlFindElement(e, node, name, nullptr, nullptr, MXML_NO_DESCEND))
        elements.push_back(e);
    return elements;
}

std::string elementText(mxml_node_t* element) {
    std::string text;
    for (mxml_node_t* c = mxmlGetFirstChild(element); c; c = mxmlGetNextSibling(c))
        if (mxmlGetType(c) == MXML_OPAQUE) text += mxmlGetOpaque(c);
    return trimmed(text);
}

std::optional<std::string> childText(mxml_node_t* node, const char* name) {
    mxml_node_t* element = childElement(node, name);
    if (!element) {
        std::cerr << "error retrieving " << name << "\n";
        return std::nullopt;
    }
    std::string text = elementText(element);
    if (text.empty()) {
        std::cerr << "error retrieving " << name << " content\n";
        return std::nullopt;
    }
    return text;
}

std::string attribute(mxml_node_t* element, const char* name) {
    const char* value = mxmlElementGetAttr(element, name);
    return value ? trimmed(value) : std::string();
}

std::optional<double> finiteNumber(const std::string& text) {
    if (text.empty()) return std::nullopt;
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (*end != '\0' || !std::isfinite(value)) return std::nullopt;
    return value;
}

} // namespace Tarvo::Core
