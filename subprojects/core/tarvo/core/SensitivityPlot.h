#ifndef TARVO_CORE_SENSITIVITYPLOT_H
#define TARVO_CORE_SENSITIVITYPLOT_H

#include <tarvo/core/SensitivityColumns.h>
#include <tarvo/core/SensitivityResult.h>

#include <iosfwd>

// The picture of a sensitivity run in SVG 1.1: a panel per monitored variable against the first controlled
// variable, a line per value of the other controlled variables, failed rounds marked by red crosses (at the
// foot of the panel when their value is no number), axes named by the columns' headings.
void printSensitivitySvg(std::ostream& out, const SensitivityColumns& columns, const SensitivityResult& result);

#endif
