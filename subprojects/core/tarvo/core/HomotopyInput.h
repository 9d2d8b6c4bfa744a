#ifndef TARVO_CORE_HOMOTOPYINPUT_H
#define TARVO_CORE_HOMOTOPYINPUT_H

#include <tarvo/core/HomotopyVariable.h>

#include <iosfwd>
#include <string>
#include <vector>

// What a homotopy run does: the case it works on, the number of points of its line, and the variables
// that move along it together.
struct HomotopyInput {
    // One line per field and per variable.
    void print(std::ostream& out) const;

    std::string type;
    int id = -1;
    int points = 0;
    std::vector<HomotopyVariable> controlled;
};

#endif
