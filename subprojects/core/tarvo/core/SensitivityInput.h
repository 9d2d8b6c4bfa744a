#ifndef TARVO_CORE_SENSITIVITYINPUT_H
#define TARVO_CORE_SENSITIVITYINPUT_H

#include <tarvo/core/ControlledVariable.h>
#include <tarvo/core/MonitoredVariable.h>

#include <iosfwd>
#include <string>
#include <vector>

// What a sensitivity run does: the case it works on, the grid of controlled variables, the order in which
// the grid is walked ("boustrophedon", "quasi-spiral" or else lexicographical), the round to begin with and
// the monitored variables.
struct SensitivityInput {
    // A type, an id and a starting round from 0 up, and at least one controlled variable, none of them
    // without points (a grid with an empty axis has no point to calculate), and no more than maximumRounds.
    bool defined() const;
    // The points of the grid: the product of the points of the controlled variables.
    long long rounds() const;
    // The walk through the grid is made in memory, and a round is numbered by an int.
    static constexpr long long maximumRounds = 1000000;
    // { "name": ..., "type": ..., "order": ..., "timeout": ..., "startinground": ..., "controlled": [...],
    // "monitored": [...] }
    void printJson(std::ostream& out) const;
    // One line per field and per variable.
    void print(std::ostream& out) const;

    std::string name;
    std::string type;
    int id = -1;
    std::string order;
    // Kept and printed; the run does not use it.
    double timeout = 0.0;
    int startingRound = 0;
    std::vector<ControlledVariable> controlled;
    std::vector<MonitoredVariable> monitored;
};

#endif
