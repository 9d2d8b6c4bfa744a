#ifndef TARVO_VALUE_SPARSEDERIVATIVES_H
#define TARVO_VALUE_SPARSEDERIVATIVES_H

#include <new>
#include <utility>

// The derivatives of a number in sparse mode: (direction, derivative) pairs sorted by direction, in
// one heap block that holds the count and the entries. An active number refers to its list by a plain
// pointer, which keeps the number trivially movable: the compiler then holds the temporaries of an
// expression in registers, which it does not do for a number that embeds a container.
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
    using Entry = std::pair<int, V>;

    // An empty list with room for `capacity` entries.
    static SparseDerivatives* create(int capacity) noexcept;
    static SparseDerivatives* copy(const SparseDerivatives& o) noexcept { return copy(o, o.size_); }
    // Gives the list's block back for the next list of its size.
    static void destroy(SparseDerivatives* list) noexcept;
    // a*x + b*y, direction by direction; either list may be null, not both.
    static SparseDerivatives* combine(V a, const SparseDerivatives* x, V b,
                                      const SparseDerivatives* y) noexcept;
    // Sets the derivative of direction i, inserting the entry if missing; returns the list, which may
    // have moved.
    static SparseDerivatives* set(SparseDerivatives* list, int i, V d) noexcept;

    Entry* begin() { return entries(); }
    Entry* end() { return entries() + size_; }
    const Entry* begin() const { return entries(); }
    const Entry* end() const { return entries() + size_; }
    int size() const { return size_; }
    // The derivative of direction i; 0 for a direction not held.
    V derivative(int i) const;

private:
    SparseDerivatives(int capacity) : capacity_(capacity) {}
    Entry* entries() { return reinterpret_cast<Entry*>(this + 1); }
    const Entry* entries() const { return reinterpret_cast<const Entry*>(this + 1); }
    static SparseDerivatives* copy(const SparseDerivatives& o, int capacity) noexcept;
    const Entry* lowerBound(int i) const;

    // The entries follow the header in the same block, aligned as they need.
    alignas(Entry) int size_ = 0;
    int capacity_;
};

extern template class SparseDerivatives<double>;

#endif
