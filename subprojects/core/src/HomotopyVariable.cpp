#include <tarvo/core/HomotopyVariable.h>

#include <cassert>

double HomotopyVariable::value(int point, int points) const {
    assert(point >= 0);
    assert(point < points);
    return (end - start) / (points - 1) * point + start;
}
