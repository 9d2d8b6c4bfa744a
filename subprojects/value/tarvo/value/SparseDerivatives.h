#ifndef TARVO_VALUE_SPARSEDERIVATIVES_H
#define TARVO_VALUE_SPARSEDERIVATIVES_H

#include <cstring>

// The derivatives of a number in sparse mode: directions in ascending order and their derivatives, as two
// arrays in one heap block after its header. An active number refers to its list by a plain pointer, which
// keeps the number trivially movable: the compiler then holds the temporaries of an expression in registers,
// which it does not do for a number that embeds a container. Two arrays, not one of pairs: lists with the
// same directions, the common case in a solve, are then told by one comparison of memory and combined by a
// loop over the derivatives alone, which the compiler runs on several at a time.
//
// Blocks are kept by capacity, rounded up to a power of two, on free lists of their own: a solve in sparse mode
// makes and drops a list at every step of its arithmetic, more than the allocator's per-thread caches hold.
// The arithmetic runs on one thread, as the context of its directions is one.
//
// Nothing here throws: should memory run out, the process ends. Were the arithmetic that calls these
// able to throw, the compiler would prepare an unwinding path through every temporary of an
// expression and keep them all in memory, which made arithmetic without derivatives half again as
// slow; and no caller could do anything useful with a half-built list.
template <typename V> class SparseDerivatives {
public:
    // An empty list with room for `capacity` entries.
    static SparseDerivatives* create(int capacity) noexcept;
    static SparseDerivatives* copy(const SparseDerivatives& o) noexcept { return copy(o, o.size_); }
    // Gives the list's block back for the next list of its size.
    static void destroy(SparseDerivatives* list) noexcept;
    // a*x + b*y, direction by direction; either list may be null, not both.
    static SparseDerivatives* combine(V a, const SparseDerivatives* x, V b,
                                      const SparseDerivatives* y) noexcept;
    // The directions of `o` with each derivative d replaced by f(d), in one pass over the list.
    template <typename F> static SparseDerivatives* mapped(const SparseDerivatives& o, F f) noexcept {
        SparseDerivatives* list = create(o.size_);
        std::memcpy(list->directions(), o.directions(), sizeof(int) * o.size_);
        const V* from = o.derivatives();
        V* to = list->derivatives();
        for (int k = 0; k < o.size_; ++k) to[k] = f(from[k]);
        list->size_ = o.size_;
        return list;
    }
    // Sets the derivative of direction i, inserting the entry if missing; returns the list, which may
    // have moved.
    static SparseDerivatives* set(SparseDerivatives* list, int i, V d) noexcept;

    int size() const { return size_; }
    // Entry k is direction directions()[k] with derivative derivatives()[k].
    const int* directions() const { return reinterpret_cast<const int*>(this + 1); }
    V* derivatives() { return reinterpret_cast<V*>(reinterpret_cast<char*>(this + 1) + directionBytes(capacity_)); }
    const V* derivatives() const {
        return reinterpret_cast<const V*>(reinterpret_cast<const char*>(this + 1) + directionBytes(capacity_));
    }
    // The derivative of direction i; 0 for a direction not held.
    V derivative(int i) const;
    // Replaces each derivative d by f(d).
    template <typename F> void transform(F f) {
        V* d = derivatives();
        for (int k = 0; k < size_; ++k) d[k] = f(d[k]);
    }

private:
    SparseDerivatives(int capacity) : capacity_(capacity) {}
    int* directions() { return reinterpret_cast<int*>(this + 1); }
    // The derivatives follow the directions, aligned as they need.
    static constexpr int directionBytes(int capacity) {
        return (capacity * int(sizeof(int)) + int(alignof(V)) - 1) / int(alignof(V)) * int(alignof(V));
    }
    static SparseDerivatives* copy(const SparseDerivatives& o, int capacity) noexcept;
    int lowerBound(int i) const;

    alignas(V) int size_ = 0;
    int capacity_;
};

extern template class SparseDerivatives<double>;

#endif
