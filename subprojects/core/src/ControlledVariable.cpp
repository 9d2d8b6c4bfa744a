#include <tarvo/core/ControlledVariable.h>

#include <algorithm>
#include <cassert>
#include <cmath>

ControlledVariable::ControlledVariable(const std::string& fullTag, const std::string& label, const std::string& unit,
                                       double start, double end, int points)
    : fullTag(fullTag), label(label), unit(unit), start(start), end(end), points(points) {
    assert(points >= 0);
    assert(points <= 999);
}

double ControlledVariable::step() const { return (end - start) / std::max(points - 1, 1); }

double ControlledVariable::value(int index) const { return step() * index + start; }

bool ControlledVariable::operator==(const ControlledVariable& other) const {
    return fullTag == other.fullTag && label == other.label && unit == other.unit &&
           std::fabs(start - other.start) <= 1e-5 && std::fabs(end - other.end) <= 1e-5 && points == other.points;
}
