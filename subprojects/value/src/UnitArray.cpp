#include <tarvo/value/UnitArray.h>

#include <sstream>

namespace {
const char* const baseText[ndimensions] = {"kmol", "rad", "A", "m", "cd", "kg", "K", "s", "€"};
}

// Appended to a string, not written to a stream: every quantity that goes to the store or a report has its units
// written out, and a stream costs some ten times as much to set up as the text itself.
template <typename T> std::string UnitArrayGen<T>::text() const {
    if (invalid()) return "[invalid unit]";
    std::string out;
    for (int i = 0; i < ndimensions; ++i) {
        if (e_[i] == 0) continue;
        if (!out.empty()) out += ' ';
        out += baseText[i];
        if (e_[i] != 1) (out += '^') += std::to_string(e_[i]);
    }
    return out;
}

template <typename T> std::string UnitArrayGen<T>::technicalText() const {
    std::ostringstream out;
    out << '[';
    for (int i = 0; i < ndimensions - 1; ++i) out << (i ? " " : "") << e_[i];
    out << ']';
    return out.str();
}

template class UnitArrayGen<int>;
