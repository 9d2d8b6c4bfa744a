#include <tarvo/phases/StateNumbers.h>

namespace Phase {

namespace {
constexpr int endOfList = -1;
} // namespace

bool StateNumbers::same(const Value& T, const Vector& x) const {
    if (!sameT(T) || x.size() != x_.size()) return false;
    for (std::size_t i = 0; i < x.size(); ++i)
        if (x[i].toDouble() != x_[i]) return false;
    return true;
}

bool StateNumbers::identical(const Value& T, const Vector& x) const {
    if (numdir_ != Active::numdir() || !same(T, x)) return false;
    std::size_t from = 0;
    if (!sameDerivatives_(T, from)) return false;
    for (const Value& f : x)
        if (!sameDerivatives_(f, from)) return false;
    return true;
}

void StateNumbers::take(const Value& T, const Vector& x) {
    taken_ = true;
    T_ = T.toDouble();
    x_.resize(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) x_[i] = x[i].toDouble();
    numdir_ = Active::numdir();
    derivatives_.clear();
    keepDerivatives_(T);
    for (const Value& f : x) keepDerivatives_(f);
}

void StateNumbers::keepDerivatives_(const Value& v) {
    v.active().forEachDerivative([&](int i, double d) {
        if (d != 0) derivatives_.emplace_back(i, d);
    });
    derivatives_.emplace_back(endOfList, 0.0);
}

bool StateNumbers::sameDerivatives_(const Value& v, std::size_t& from) const {
    bool same = true;
    v.active().forEachDerivative([&](int i, double d) {
        if (d == 0 || !same) return;
        same = from < derivatives_.size() && derivatives_[from] == Derivative(i, d);
        ++from;
    });
    same = same && from < derivatives_.size() && derivatives_[from].first == endOfList;
    ++from;
    return same;
}

} // namespace Phase
