#ifndef TARVO_PHASES_STATENUMBERS_H
#define TARVO_PHASES_STATENUMBERS_H

#include <tarvo/value/Value.h>

#include <utility>
#include <vector>

namespace Phase {

// The numbers of a state (T and x) that a model has worked on, with their derivatives in the context of
// the time, to tell a repeated call from a new one.
class StateNumbers {
public:
    // The same numbers, whatever their derivatives.
    bool same(const Value& T, const Vector& x) const;
    bool sameT(const Value& T) const { return taken_ && T.toDouble() == T_; }
    // The same numbers and the same derivatives in a context of the same number of directions: whatever
    // is computed from (T, x) alone comes out the same, derivatives included.
    bool identical(const Value& T, const Vector& x) const;
    void take(const Value& T, const Vector& x);
    void forget() { taken_ = false; }

private:
    using Derivative = std::pair<int, double>;
    // Appends the non-zero derivatives of v; compares them with those kept from `from` on, moving it on.
    void keepDerivatives_(const Value& v);
    bool sameDerivatives_(const Value& v, std::size_t& from) const;

    bool taken_ = false;
    double T_ = 0;
    std::vector<double> x_;
    int numdir_ = 0;
    // The derivatives of T and then of each x[i], each list closed by an entry of direction -1.
    std::vector<Derivative> derivatives_;
};

} // namespace Phase

#endif
