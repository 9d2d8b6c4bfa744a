#include <tarvo/core/NumberText.h>
#include <tarvo/core/SensitivityInput.h>

#include <algorithm>
#include <ostream>

using Tarvo::Core::jsonQuoted;
using Tarvo::Core::numberText;

bool SensitivityInput::defined() const {
    if (type.empty() || id < 0 || startingRound < 0 || controlled.empty()) return false;
    for (const ControlledVariable& v : controlled)
        if (v.points < 1) return false;
    return rounds() <= maximumRounds;
}

long long SensitivityInput::rounds() const {
    long long product = 1;
    // Each factor is at most 999, and the product stops growing once it passes the limit.
    for (const ControlledVariable& v : controlled) product = std::min(product * std::max(v.points, 0), maximumRounds + 1);
    return product;
}

void SensitivityInput::printJson(std::ostream& out) const {
    out << "{ \"name\": " << jsonQuoted(name) << ", \"type\": " << jsonQuoted(type) << ", \"order\": "
        << jsonQuoted(order) << ", \"timeout\": " << numberText(timeout) << ", \"startinground\": " << startingRound
        << ", \"controlled\": [";
    const char* separator = " ";
    for (const ControlledVariable& v : controlled) {
        out << separator << "{\"variable\": " << jsonQuoted(v.fullTag) << ", \"label\": " << jsonQuoted(v.label)
            << ", \"unit\": " << jsonQuoted(v.unit) << ", \"start\": " << numberText(v.start)
            << ", \"end\": " << numberText(v.end) << ", \"points\": " << v.points << "}";
        separator = ", ";
    }
    out << " ], \"monitored\": [";
    separator = " ";
    for (const MonitoredVariable& v : monitored) {
        out << separator << "{\"variable\": " << jsonQuoted(v.fullTag) << ", \"label\": " << jsonQuoted(v.label)
            << ", \"unit\": " << jsonQuoted(v.unit) << "}";
        separator = ", ";
    }
    out << " ] }";
}

void SensitivityInput::print(std::ostream& out) const {
    out << "name = " << name << "\ntype = " << type << "\nid = " << id << "\norder = " << order
        << "\ntimeout = " << timeout << "\nstartingRound = " << startingRound << "\ncontrolled variables:\n";
    for (std::size_t i = 0; i < controlled.size(); ++i) {
        const ControlledVariable& v = controlled[i];
        out << i << "-th controlled variable: " << v.fullTag << " \"" << v.label << "\" [" << v.unit << "] from "
            << v.start << " to " << v.end << " in " << v.points << " points\n";
    }
    for (std::size_t i = 0; i < monitored.size(); ++i) {
        const MonitoredVariable& v = monitored[i];
        out << i << "-th monitored variable: " << v.fullTag << " \"" << v.label << "\" [" << v.unit << "]\n";
    }
}
