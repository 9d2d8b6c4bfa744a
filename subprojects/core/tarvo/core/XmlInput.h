#ifndef TARVO_CORE_XMLINPUT_H
#define TARVO_CORE_XMLINPUT_H

#include <mxml.h>

#include <optional>
#include <string>
#include <vector>

namespace Tarvo::Core {

// The text of an XML input, where a reader otherwise takes the name of a file.
struct XmlText {
    std::string text;
};

// An XML document read by Mini-XML, freed with the object. Texts are kept whole, so that a name with
// blanks reads as it was written.
class XmlTree {
public:
    // `opened` tells whether the file could be opened; root() is null when it could not be read or parsed,
    // else the node above the document's elements.
    XmlTree(const std::string& file, bool& opened);
    explicit XmlTree(const XmlText& text);
    XmlTree(const XmlTree&) = delete;
    XmlTree& operator=(const XmlTree&) = delete;
    ~XmlTree();
    mxml_node_t* root() const { return parsed_ ? root_ : nullptr; }

private:
    mxml_node_t* root_;
    bool parsed_ = false;
};

// The first element `name` anywhere under `node`, or null.
mxml_node_t* findElement(mxml_node_t* node, const char* name);
// The first child element `name` of `node`, or null.
mxml_node_t* childElement(mxml_node_t* node, const char* name);
// The child elements `name` of `node`, in order.
std::vector<mxml_node_t*> childElements(mxml_node_t* node, const char* name);
// The text of the child element `name` of `node`, without the blanks around it. Without the element it
// prints "error retrieving <name>" on standard error, without text "error retrieving <name> content", and
// gives nothing.
std::optional<std::string> childText(mxml_node_t* node, const char* name);
// The text of an element, without the blanks around it; empty when it has none.
std::string elementText(mxml_node_t* element);
// An attribute of an element; empty when it is missing.
std::string attribute(mxml_node_t* element, const char* name);
// The finite number that the whole of `text` writes, or nothing.
std::optional<double> finiteNumber(const std::string& text);

} // namespace Tarvo::Core

#endif
