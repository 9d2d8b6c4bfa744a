#ifndef TARVO_VALUE_ACTIVE_H
#define TARVO_VALUE_ACTIVE_H

#include <tarvo/value/ActiveContext.h>
#include <tarvo/value/Hot.h>
#include <tarvo/value/SparseDerivatives.h>

#include <cmath>
#include <string>
#include <utility>

// A number that carries its derivatives with respect to the directions of the current ActiveContext
// (forward-mode automatic differentiation). Up to 5 directions the derivatives sit in a fixed array
// inside the object, so a calculation allocates nothing; from 6 directions on they sit in a sorted
// list of (direction, derivative) pairs that holds only the directions actually reached.
// The store in use is decided by the context, not by the object.
template <typename V> class GenericActive {
public:
    static constexpr int ndense = 5;
    using Sparse = SparseDerivatives<V>;

    GenericActive() : v_(0) {}
    GenericActive(V x) : v_(x) {} // implicit: a constant has no derivatives
    // A copy is not an independent variable, whatever its source is.
    GenericActive(const GenericActive& o) : v_(o.v_) { copyDerivatives(o); }
    GenericActive(GenericActive&& o) noexcept : v_(o.v_) { takeDerivatives(o); }
    // Inlined also where an exception unwinds: called there, it would take the address of every
    // temporary of an expression, and the compiler would keep them all in memory.
    TARVO_HOT ~GenericActive() { releaseSparse(); }

    GenericActive& operator=(const GenericActive& o) {
        if (this != &o) {
            checkWritable();
            releaseSparse();
            v_ = o.v_;
            copyDerivatives(o);
        }
        return *this;
    }
    GenericActive& operator=(GenericActive&& o) noexcept {
        if (this != &o) {
            checkWritable();
            releaseSparse();
            v_ = o.v_;
            takeDerivatives(o);
        }
        return *this;
    }
    GenericActive& operator=(V x) {
        checkWritable();
        v_ = x;
        clearderivatives();
        return *this;
    }

    V val() const { return v_; }
    bool active() const { return active_; }

    // The number of directions of the current context, cached from its top.
    static int numdir() { return numdir_; }
    static bool sparse() { return numdir_ > ndense; }
    // Set once by the kernel's start-up: from then on an independent variable may not be assigned.
    static bool strict_ro() { return strict_ro_; }
    static void setStrictReadOnly() { strict_ro_ = true; }

    // Makes this object the independent variable of direction i: derivative 1 there, 0 elsewhere.
    void setActive(int i);
    void inactivate(int i);
    // Zero derivatives; a sparse store keeps its entries, with value 0.
    void clearderivatives() {
        if (nd_ == sparseStore)
            sparse_->transform([](V) { return V(0); });
        else
            nd_ = 0;
    }
    void clear() {
        v_ = 0;
        clearderivatives();
    }

    // The derivative for direction i; 0 for a direction that the store does not hold.
    V derivative(int i) const;
    void setDerivative(int i, V d);
    // The sum of the absolute derivatives, in either store. Tells a residual that depends on something from
    // one that does not, whatever the signs of its derivatives.
    V sumAbsoluteDerivatives() const;
    // Calls visit(direction, derivative) for the derivatives that the store of the current mode holds,
    // in ascending direction, so that a Jacobian is filled in one pass over its non-zeros.
    template <typename Visit> void forEachDerivative(Visit visit) const {
        if (numdir_ <= ndense) {
            for (int i = 0; i < nd_ && i < numdir_; ++i) visit(i, dense_[i]);
        } else if (nd_ == sparseStore) {
            const Sparse& list = *sparse_;
            for (int k = 0; k < list.size(); ++k) visit(list.directions()[k], list.derivatives()[k]);
        }
    }

    // "1.5 [ 0 1 ]": the value, then the derivatives of the current context.
    std::string str() const;

    GenericActive& operator+=(const GenericActive& o) { return *this = combine(v_ + o.v_, 1, *this, 1, o); }
    GenericActive& operator-=(const GenericActive& o) { return *this = combine(v_ - o.v_, 1, *this, -1, o); }
    GenericActive& operator*=(const GenericActive& o) { return *this = combine(v_ * o.v_, o.v_, *this, v_, o); }
    GenericActive& operator/=(const GenericActive& o) {
        return *this = combine(v_ / o.v_, 1 / o.v_, *this, -v_ / (o.v_ * o.v_), o);
    }
    GenericActive& operator+=(V c) {
        checkWritable();
        v_ += c;
        return *this;
    }
    GenericActive& operator-=(V c) {
        checkWritable();
        v_ -= c;
        return *this;
    }
    GenericActive& operator*=(V c) {
        checkWritable();
        v_ *= c;
        scale(c);
        return *this;
    }
    GenericActive& operator/=(V c) {
        checkWritable();
        v_ /= c;
        scale(1 / c);
        return *this;
    }

    // The rules of differentiation of the arithmetic. Friends, so that a double converts to a constant.
    TARVO_HOT friend GenericActive operator+(const GenericActive& x, const GenericActive& y) {
        return combine(x.v_ + y.v_, 1, x, 1, y);
    }
    TARVO_HOT friend GenericActive operator-(const GenericActive& x, const GenericActive& y) {
        return combine(x.v_ - y.v_, 1, x, -1, y);
    }
    TARVO_HOT friend GenericActive operator*(const GenericActive& x, const GenericActive& y) {
        return combine(x.v_ * y.v_, y.v_, x, x.v_, y);
    }
    TARVO_HOT friend GenericActive operator/(const GenericActive& x, const GenericActive& y) {
        return combine(x.v_ / y.v_, 1 / y.v_, x, -x.v_ / (y.v_ * y.v_), y);
    }
    TARVO_HOT friend GenericActive operator-(const GenericActive& x) { return chain(-x.v_, -1, x); }
    TARVO_HOT friend GenericActive operator+(const GenericActive& x, V c) { return chain(x.v_ + c, 1, x); }
    TARVO_HOT friend GenericActive operator-(const GenericActive& x, V c) { return chain(x.v_ - c, 1, x); }
    TARVO_HOT friend GenericActive operator*(const GenericActive& x, V c) { return chain(x.v_ * c, c, x); }
    TARVO_HOT friend GenericActive operator/(const GenericActive& x, V c) { return chain(x.v_ / c, 1 / c, x); }
    TARVO_HOT friend GenericActive operator+(V c, const GenericActive& x) { return chain(c + x.v_, 1, x); }
    TARVO_HOT friend GenericActive operator-(V c, const GenericActive& x) { return chain(c - x.v_, -1, x); }
    TARVO_HOT friend GenericActive operator*(V c, const GenericActive& x) { return chain(c * x.v_, c, x); }
    TARVO_HOT friend GenericActive operator/(V c, const GenericActive& x) {
        return chain(c / x.v_, -c / (x.v_ * x.v_), x);
    }

    // r = a*x + b*y with derivatives a*dx + b*dy: every binary rule is one of these.
    TARVO_HOT static GenericActive combine(V value, V a, const GenericActive& x, V b, const GenericActive& y) {
        GenericActive r;
        combineInto(r, value, a, x, b, y);
        return r;
    }
    // r = f(x) with derivative k * dx.
    TARVO_HOT static GenericActive chain(V value, V k, const GenericActive& x) {
        GenericActive r;
        chainInto(r, value, k, x);
        return r;
    }
    // r = f(x) with the derivative of each direction given by rule(d).
    template <typename Rule> TARVO_HOT static GenericActive chainBy(V value, const GenericActive& x, Rule rule) {
        GenericActive r;
        chainByInto(r, value, x, rule);
        return r;
    }
    // The same, written into a freshly constructed r, so that a Value builds its result in place.
    TARVO_HOT static void combineInto(GenericActive& r, V value, V a, const GenericActive& x, V b,
                                      const GenericActive& y) {
        r.v_ = value;
        if (numdir_ == 0) return;
        if (numdir_ <= ndense) {
            r.nd_ = static_cast<short>(numdir_);
            for (int i = 0; i < numdir_; ++i) r.dense_[i] = a * x.dense(i) + b * y.dense(i);
        } else if (x.nd_ == sparseStore || y.nd_ == sparseStore) {
            r.sparse_ = Sparse::combine(a, x.sparseList(), b, y.sparseList());
            r.nd_ = sparseStore;
        }
    }
    TARVO_HOT static void chainInto(GenericActive& r, V value, V k, const GenericActive& x) {
        chainByInto(r, value, x, [k](V d) { return k * d; });
    }
    template <typename Rule>
    TARVO_HOT static void chainByInto(GenericActive& r, V value, const GenericActive& x, Rule rule) {
        r.v_ = value;
        if (numdir_ == 0) return;
        if (numdir_ <= ndense) {
            r.nd_ = static_cast<short>(numdir_);
            for (int i = 0; i < numdir_; ++i) r.dense_[i] = rule(x.dense(i));
        } else if (x.nd_ == sparseStore) {
            r.sparse_ = Sparse::mapped(*x.sparse_, rule);
            r.nd_ = sparseStore;
        }
    }

private:
    // nd_ tells what the union holds: with nd_ >= 0 the first nd_ dense derivatives (the rest read as
    // zero without being stored, so that a value built outside a solve costs no derivative work);
    // with sparseStore a sparse list, which lives in the same place.
    static constexpr short sparseStore = -1;

    V dense(int i) const { return i < nd_ ? dense_[i] : V(0); }
    const Sparse* sparseList() const { return nd_ == sparseStore ? sparse_ : nullptr; }
    TARVO_HOT void releaseSparse() {
        if (nd_ == sparseStore) Sparse::destroy(sparse_);
        nd_ = 0;
    }
    void copyDerivatives(const GenericActive& o) {
        if (o.nd_ == sparseStore) {
            sparse_ = Sparse::copy(*o.sparse_);
        } else {
            for (int i = 0; i < o.nd_; ++i) dense_[i] = o.dense_[i];
        }
        nd_ = o.nd_;
    }
    void takeDerivatives(GenericActive& o) {
        if (o.nd_ == sparseStore) {
            sparse_ = o.sparse_;
        } else {
            for (int i = 0; i < o.nd_; ++i) dense_[i] = o.dense_[i];
        }
        nd_ = o.nd_;
        o.nd_ = 0;
    }
    void checkWritable() const {
        if (numdir_ != 0 && strict_ro_ && active_) severeError();
    }
    [[noreturn]] static void severeError();
    void scale(V c) {
        if (nd_ == sparseStore)
            sparse_->transform([c](V d) { return d * c; });
        else
            for (int i = 0; i < nd_; ++i) dense_[i] *= c;
    }

    inline static int numdir_ = 0;
    inline static bool strict_ro_ = false;
    friend class ActiveContext;

    V v_;
    bool active_ = false;
    short nd_ = 0;
    union {
        V dense_[ndense]; // a plain array: the compiler keeps a std::array of temporaries in memory
        Sparse* sparse_;
    };
};

using Active = GenericActive<double>;

namespace ActiveRules {

// log, log10, sqrt and curt: the rule holds for x > 0, and at x = 0 for a non-negative d, where plain
// division gives infinity or NaN; a negative d at 0, a negative x or a NaN x give NaN.
template <typename V> inline V guarded(V x, V d, V divisor) {
    if (x > 0 || (x == 0 && d >= 0)) return d / divisor;
    return std::nan("");
}

} // namespace ActiveRules

template <typename V> inline GenericActive<V> exp(const GenericActive<V>& x) {
    const V e = std::exp(x.val());
    return GenericActive<V>::chain(e, e, x);
}
template <typename V> inline GenericActive<V> log(const GenericActive<V>& x) {
    const V v = x.val();
    return GenericActive<V>::chainBy(std::log(v), x, [v](V d) { return ActiveRules::guarded(v, d, v); });
}
template <typename V> inline GenericActive<V> log10(const GenericActive<V>& x) {
    const V v = x.val();
    return GenericActive<V>::chainBy(std::log10(v), x,
                                     [v](V d) { return ActiveRules::guarded(v, d, v * 2.302585092994046); });
}
template <typename V> inline GenericActive<V> sqrt(const GenericActive<V>& x) {
    const V v = x.val(), s = std::sqrt(v);
    return GenericActive<V>::chainBy(s, x, [v, s](V d) { return ActiveRules::guarded(v, d, 2 * s); });
}
// Cube root.
template <typename V> inline GenericActive<V> curt(const GenericActive<V>& x) {
    const V v = x.val();
    const V divisor = 3 * std::pow(v, 0.6666666666666666);
    return GenericActive<V>::chainBy(std::pow(v, 0.3333333333333333), x,
                                     [v, divisor](V d) { return ActiveRules::guarded(v, d, divisor); });
}
template <typename V> inline GenericActive<V> sin(const GenericActive<V>& x) {
    return GenericActive<V>::chain(std::sin(x.val()), std::cos(x.val()), x);
}
template <typename V> inline GenericActive<V> cos(const GenericActive<V>& x) {
    return GenericActive<V>::chain(std::cos(x.val()), -std::sin(x.val()), x);
}
template <typename V> inline GenericActive<V> tan(const GenericActive<V>& x) {
    const V c = std::cos(x.val()), c2 = c * c;
    return GenericActive<V>::chainBy(std::tan(x.val()), x, [c2](V d) { return d / c2; });
}
template <typename V> inline GenericActive<V> asin(const GenericActive<V>& x) {
    const V v = x.val();
    return GenericActive<V>::chainBy(std::asin(v), x, [v](V d) {
        return v >= -1 && v <= 1 ? d / std::sqrt(1 - v * v) : std::nan("");
    });
}
template <typename V> inline GenericActive<V> acos(const GenericActive<V>& x) {
    const V v = x.val();
    return GenericActive<V>::chainBy(std::acos(v), x, [v](V d) {
        return v >= -1 && v <= 1 ? -d / std::sqrt(1 - v * v) : std::nan("");
    });
}
template <typename V> inline GenericActive<V> atan(const GenericActive<V>& x) {
    return GenericActive<V>::chain(std::atan(x.val()), 1 / (1 + x.val() * x.val()), x);
}
template <typename V> inline GenericActive<V> sinh(const GenericActive<V>& x) {
    return GenericActive<V>::chain(std::sinh(x.val()), std::cosh(x.val()), x);
}
template <typename V> inline GenericActive<V> cosh(const GenericActive<V>& x) {
    return GenericActive<V>::chain(std::cosh(x.val()), std::sinh(x.val()), x);
}
template <typename V> inline GenericActive<V> pow(const GenericActive<V>& x, V r) {
    return GenericActive<V>::chain(std::pow(x.val(), r), r * std::pow(x.val(), r - 1), x);
}
template <typename V> inline GenericActive<V> pow(const GenericActive<V>& x, const GenericActive<V>& y) {
    const V p = std::pow(x.val(), y.val());
    return GenericActive<V>::combine(p, y.val() * std::pow(x.val(), y.val() - 1), x, std::log(x.val()) * p, y);
}
// At 0 the derivative is that of growth: |d|.
template <typename V> inline GenericActive<V> fabs(const GenericActive<V>& x) {
    const V v = x.val();
    return GenericActive<V>::chainBy(std::fabs(v), x, [v](V d) { return v > 0 ? d : v < 0 ? -d : std::fabs(d); });
}

extern template class GenericActive<double>;

#endif
