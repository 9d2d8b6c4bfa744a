#ifndef TARVO_CORE_SENSITIVITYINPUTXML_H
#define TARVO_CORE_SENSITIVITYINPUTXML_H

#include <tarvo/core/SensitivityInput.h>
#include <tarvo/core/XmlInput.h>

#include <string>

// A sensitivity input read from XML: the first element "sensitivity" anywhere in the document, with the
// elements name (optional), type, id, order, timeout and startinground, and the lists "controlled" and
// "monitored" of "variable" elements, whose text is the tag path and whose attributes are start, end,
// points, unit and label (unit and label for a monitored one). Whatever is missing or unreadable is an
// ErrorRunTime that names it.
class SensitivityInputXml : public SensitivityInput {
public:
    explicit SensitivityInputXml(const std::string& file);
    explicit SensitivityInputXml(const Tarvo::Core::XmlText& text);

private:
    void read_(const Tarvo::Core::XmlTree& tree);
};

#endif
