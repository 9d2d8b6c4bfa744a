#ifndef TARVO_PHASES_STATENUMBERS_H
#define TARVO_PHASES_STATENUMBERS_H

#include <tarvo/value/Value.h>

#include <vector>

namespace Phase {

// The numbers of a state (T and x) that a model has worked on, to tell a repeated call from a new one.
// Only the numbers count: a caller that needs derivatives must not take a repeat for the same call.
class StateNumbers {
public:
    bool same(const Value& T, const Vector& x) const;
    bool sameT(const Value& T) const { return taken_ && T.toDouble() == T_; }
    void take(const Value& T, const Vector& x);
    void forget() { taken_ = false; }

private:
    bool taken_ = false;
    double T_ = 0;
    std::vector<double> x_;
};

} // namespace Phase

#endif
