#ifndef TARVO_VALUE_UNITARRAY_H
#define TARVO_VALUE_UNITARRAY_H

#include <array>
#include <cassert>
#include <climits>
#include <string>

// Exponents of the nine base dimensions, in this order: amount (kmol), angle (rad), electric current (A),
// length (m), luminous intensity (cd), mass (kg), temperature (K), time (s), money (€).
constexpr int ndimensions = 9;

// Filling every entry with this marks units that have not been given yet.
constexpr int invalidUnitExponent = INT_MAX;

template <typename T> class UnitArrayGen {
public:
    UnitArrayGen() : e_{} {}
    explicit UnitArrayGen(T fill) { e_.fill(fill); }
    UnitArrayGen(T amount, T angle, T current, T length, T luminous, T mass, T temperature, T time, T money)
        : e_{amount, angle, current, length, luminous, mass, temperature, time, money} {}

    T operator[](int i) const {
        assert(i >= 0);
        assert(i < ndimensions);
        return e_[i];
    }
    T& operator[](int i) {
        assert(i >= 0);
        assert(i < ndimensions);
        return e_[i];
    }

    UnitArrayGen& operator+=(const UnitArrayGen& o) {
        for (int i = 0; i < ndimensions; ++i) e_[i] += o.e_[i];
        return *this;
    }
    UnitArrayGen& operator-=(const UnitArrayGen& o) {
        for (int i = 0; i < ndimensions; ++i) e_[i] -= o.e_[i];
        return *this;
    }
    UnitArrayGen& operator/=(int divisor) {
        for (int i = 0; i < ndimensions; ++i) e_[i] /= divisor;
        return *this;
    }
    UnitArrayGen operator-() const {
        UnitArrayGen r(*this);
        for (int i = 0; i < ndimensions; ++i) r.e_[i] = -r.e_[i];
        return r;
    }
    bool operator==(const UnitArrayGen& o) const {
        T differ = 0;
        for (int i = 0; i < ndimensions; ++i) differ |= e_[i] ^ o.e_[i];
        return differ == 0;
    }
    bool operator!=(const UnitArrayGen& o) const { return !(*this == o); }
    bool allEqual(T v) const {
        T differ = 0;
        for (int i = 0; i < ndimensions; ++i) differ |= e_[i] ^ v;
        return differ == 0;
    }
    bool invalid() const { return e_[0] == invalidUnitExponent; }

    // "m^2 kg s^-2" for the joule, "" for dimensionless, "[invalid unit]" before units are given.
    std::string text() const;
    // "[e0 e1 ... e7]": the first eight exponents, for debugging.
    std::string technicalText() const;

private:
    std::array<T, ndimensions> e_;
};

using UnitArray = UnitArrayGen<int>;

extern template class UnitArrayGen<int>;

#endif
