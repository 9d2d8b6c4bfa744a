#include <tarvo/phases/StateNumbers.h>

namespace Phase {

bool StateNumbers::same(const Value& T, const Vector& x) const {
    if (!taken_ || T.toDouble() != T_ || x.size() != x_.size()) return false;
    for (std::size_t i = 0; i < x.size(); ++i)
        if (x[i].toDouble() != x_[i]) return false;
    return true;
}

void StateNumbers::take(const Value& T, const Vector& x) {
    taken_ = true;
    T_ = T.toDouble();
    x_.resize(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) x_[i] = x[i].toDouble();
}

} // namespace Phase
