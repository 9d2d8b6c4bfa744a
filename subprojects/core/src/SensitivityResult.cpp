#include <tarvo/core/NumberText.h>
#include <tarvo/core/SensitivityResult.h>

#include <cmath>
#include <ostream>

using Tarvo::Core::numberText;

namespace {

void printXmlVariables(std::ostream& out, const char* list, const std::vector<double>& values) {
    out << "    <" << list << ">\n";
    for (double v : values) out << "      <variable>" << numberText(v) << "</variable>\n";
    out << "    </" << list << ">\n";
}

std::string jsonNumber(double value) { return std::isfinite(value) ? numberText(value) : "null"; }

void printJsonVariables(std::ostream& out, const char* list, const std::vector<double>& values) {
    out << "\"" << list << "\": { \"variable\": [";
    const char* separator = " ";
    for (double v : values) {
        out << separator << jsonNumber(v);
        separator = ", ";
    }
    out << " ] }";
}

} // namespace

void SensitivityResult::printXml(std::ostream& out) const {
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<results xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
           "xsi:noNamespaceSchemaLocation=\"SensitivityResult_schema.xsd\">\n";
    for (const Row& row : rows) {
        out << "  <result>\n"
            << "    <round>" << row.round << "</round>\n"
            << "    <time>" << numberText(row.time) << "</time>\n"
            << "    <errors>" << row.errors << "</errors>\n"
            << "    <warnings>" << row.warnings << "</warnings>\n"
            << "    <iterations>" << row.iterations << "</iterations>\n";
        printXmlVariables(out, "controlled", row.controlled);
        printXmlVariables(out, "monitored", row.monitored);
        out << "  </result>\n";
    }
    out << "</results>\n";
}

void SensitivityResult::printJson(std::ostream& out) const {
    out << "{ \"results\": { \"result\": [";
    const char* separator = " ";
    for (const Row& row : rows) {
        out << separator << "{ \"round\": " << row.round << ", \"time\": " << jsonNumber(row.time)
            << ", \"errors\": " << row.errors << ", \"warnings\": " << row.warnings
            << ", \"iterations\": " << row.iterations << ", ";
        printJsonVariables(out, "controlled", row.controlled);
        out << ", ";
        printJsonVariables(out, "monitored", row.monitored);
        out << " }";
        separator = ", ";
    }
    out << " ] } }\n";
}
