#ifndef TARVO_CORE_HOMOTOPYVARIABLE_H
#define TARVO_CORE_HOMOTOPYVARIABLE_H

#include <string>

// A quantity that a homotopy run carries from `start` to `end`, in the units that its item holds.
struct HomotopyVariable {
    // Point `point` of `points` equal steps, `start` at 0 and `end` at points - 1.
    double value(int point, int points) const;

    std::string fullTag;
    double start = 0.0;
    double end = 0.0;
};

#endif
