#ifndef TARVO_CORE_SENSITIVITYRESULT_H
#define TARVO_CORE_SENSITIVITYRESULT_H

#include <iosfwd>
#include <vector>

// The rounds of a sensitivity run so far: for each, what it cost, how it ended, and the values of the
// controlled and monitored variables in their units.
struct SensitivityResult {
    struct Row {
        int round = 0;
        double time = 0.0; // seconds
        int errors = 0;
        int warnings = 0;
        int iterations = 0;
        std::vector<double> controlled;
        std::vector<double> monitored;
    };

    // "SensitivityResults.xml": a "results" element with a "result" element per row.
    void printXml(std::ostream& out) const;
    // { "results": { "result": [ ... ] } }; a number that JSON cannot hold (NaN, infinities) is null.
    void printJson(std::ostream& out) const;

    std::vector<Row> rows;
};

#endif
