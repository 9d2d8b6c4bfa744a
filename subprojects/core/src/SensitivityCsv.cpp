#include <tarvo/core/NumberText.h>
#include <tarvo/core/SensitivityCsv.h>

#include <ostream>

namespace {

// A field in quotes when it holds a comma, a quote or a line end, its quotes doubled.
std::string field(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

} // namespace

void printSensitivityCsv(std::ostream& out, const SensitivityColumns& columns, const SensitivityResult& result) {
    out << "round,time [s],errors,warnings,iterations";
    for (const SensitivityColumn& c : columns.controlled) out << ',' << field(c.heading());
    for (const SensitivityColumn& c : columns.monitored) out << ',' << field(c.heading());
    out << "\r\n";
    for (const SensitivityResult::Row& row : result.rows) {
        out << row.round << ',' << Tarvo::Core::numberText(row.time) << ',' << row.errors << ',' << row.warnings << ','
            << row.iterations;
        for (double v : row.controlled) out << ',' << Tarvo::Core::numberText(v);
        for (double v : row.monitored) out << ',' << Tarvo::Core::numberText(v);
        out << "\r\n";
    }
}
