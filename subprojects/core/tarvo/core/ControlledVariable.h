#ifndef TARVO_CORE_CONTROLLEDVARIABLE_H
#define TARVO_CORE_CONTROLLEDVARIABLE_H

#include <string>

// An input of a sensitivity run: the quantity at `fullTag` walks from `start` to `end` in `points` equal
// steps, given in `unit` (the item's own unit when empty).
struct ControlledVariable {
    ControlledVariable(const std::string& fullTag, const std::string& label, const std::string& unit, double start,
                       double end, int points);

    // (end - start) / (points - 1); a single point takes the whole span as its step and stays at `start`.
    double step() const;
    double value(int index) const;
    // Equal tags, label and unit, bounds within 1e-5 and equal points.
    bool operator==(const ControlledVariable& other) const;

    std::string fullTag;
    std::string label;
    std::string unit;
    double start;
    double end;
    int points;
};

#endif
