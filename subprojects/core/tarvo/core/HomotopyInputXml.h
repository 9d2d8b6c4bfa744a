#ifndef TARVO_CORE_HOMOTOPYINPUTXML_H
#define TARVO_CORE_HOMOTOPYINPUTXML_H

#include <tarvo/core/HomotopyInput.h>
#include <tarvo/core/XmlInput.h>

#include <string>

// A homotopy input read from XML: the first element "homotopy" anywhere in the document, with the
// elements type, id and points, and the list "controlled" of "variable" elements, whose text is the tag
// path and whose attributes are start and end. A file that cannot be opened or parsed, or holds no
// "homotopy", leaves the input empty with a line on standard error; a missing or unreadable field is an
// ErrorRunTime that names it.
class HomotopyInputXml : public HomotopyInput {
public:
    explicit HomotopyInputXml(const std::string& file);
    explicit HomotopyInputXml(const Tarvo::Core::XmlText& text);

private:
    void read_(const Tarvo::Core::XmlTree& tree);
};

#endif
