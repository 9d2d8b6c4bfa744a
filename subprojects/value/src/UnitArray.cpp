#include <tarvo/value/UnitArray.h>

#include <sstream>

namespace {
const char* const baseText[ndimensions] = {"kmol", "rad", "A", "m", "cd", "kg", "K", "s", "€"};
}

template <typename T> std::string UnitArrayGen<T>::text() const {
    if (invalid()) return "[invalid unit]";
    std::ostringstream out;
    bool first = true;
    for (int i = 0; i < ndimensions; ++i) {
        if (e_[i] == 0) continue;
        if (!first) out << ' ';
        first = false;
        out << baseText[i];
        if (e_[i] != 1) out << '^' << e_[i];
    }
    return out.str();
}

template <typename T> std::string UnitArrayGen<T>::technicalText() const {
    std::ostringstream out;
    out << '[';
    for (int i = 0; i < ndimensions - 1; ++i) out << (i ? " " : "") << e_[i];
    out << ']';
    return out.str();
}

template class UnitArrayGen<int>;
