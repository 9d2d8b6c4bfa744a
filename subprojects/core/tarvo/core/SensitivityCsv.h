#ifndef TARVO_CORE_SENSITIVITYCSV_H
#define TARVO_CORE_SENSITIVITYCSV_H

#include <tarvo/core/SensitivityColumns.h>
#include <tarvo/core/SensitivityResult.h>

#include <iosfwd>

// The rows of a sensitivity run as comma-separated values for a spreadsheet or a data-frame reader: a header
// of the columns with their units, then one line per round, numbers with all their digits.
void printSensitivityCsv(std::ostream& out, const SensitivityColumns& columns, const SensitivityResult& result);

#endif
