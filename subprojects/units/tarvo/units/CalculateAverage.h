#ifndef TARVO_UNITS_CALCULATEAVERAGE_H
#define TARVO_UNITS_CALCULATEAVERAGE_H

#include <tarvo/value/Value.h>

#include <string>

// The mean temperature difference of a heat transfer between the differences a and b at its two ends, by
// `option`: "linear", "linearClipped", "LMTD", "LmtdClipped" or "CSTR" (b, the outlet's). Where the
// logarithmic mean has no value, a difference of 0 or two of opposite sign, the mean is a tiny positive
// number that carries the derivatives of the arithmetic mean, so that a Newton step still sees the way out.
// Another option raises ErrorBrowsing.
void calculateAverage(const std::string& option, const Value& a, const Value& b, Value& average);

#endif
