#include <tarvo/value/SparseDerivatives.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace {
// Capacities of 1, 2, 4, ... 2^(pooledClasses - 1) entries are pooled; larger lists are rare and go to the heap.
// Under the address sanitizer every list has a block of its own, so that a use after its end shows.
#if defined(__SANITIZE_ADDRESS__)
constexpr int pooledClasses = 0;
#else
constexpr int pooledClasses = 10;
#endif

// The power of two of the least pooled capacity that holds `capacity` entries; pooledClasses beyond them.
int sizeClass(int capacity) {
    int k = 0;
    while (k < pooledClasses && (1 << k) < capacity) ++k;
    return k;
}

// A free block's first bytes link it to the next free block of its class.
struct FreeBlock {
    FreeBlock* next;
};
std::array<FreeBlock*, pooledClasses> freeBlocks{};
} // namespace

template <typename V> SparseDerivatives<V>* SparseDerivatives<V>::create(int capacity) noexcept {
    static_assert(sizeof(SparseDerivatives) % alignof(Entry) == 0, "the entries follow the header aligned");
    static_assert(sizeof(SparseDerivatives) >= sizeof(FreeBlock), "a free block holds its link");
    const int k = sizeClass(capacity);
    if (k < pooledClasses) capacity = 1 << k;
    void* block;
    if (k < pooledClasses && freeBlocks[k]) {
        block = freeBlocks[k];
        freeBlocks[k] = freeBlocks[k]->next;
    } else {
        block = ::operator new(sizeof(SparseDerivatives) + sizeof(Entry) * capacity);
    }
    return new (block) SparseDerivatives(capacity);
}

template <typename V> void SparseDerivatives<V>::destroy(SparseDerivatives* list) noexcept {
    const int k = sizeClass(list->capacity_);
    if (k >= pooledClasses) {
        ::operator delete(list);
        return;
    }
    freeBlocks[k] = new (static_cast<void*>(list)) FreeBlock{freeBlocks[k]};
}

template <typename V>
SparseDerivatives<V>* SparseDerivatives<V>::copy(const SparseDerivatives& o, int capacity) noexcept {
    SparseDerivatives* list = create(capacity);
    std::memcpy(static_cast<void*>(list->entries()), o.entries(), sizeof(Entry) * o.size_);
    list->size_ = o.size_;
    return list;
}

template <typename V>
SparseDerivatives<V>* SparseDerivatives<V>::combine(V a, const SparseDerivatives* x, V b,
                                                    const SparseDerivatives* y) noexcept {
    // Half the lists of a flowsheet's solve meet a number without derivatives, and a quarter one with the same
    // directions (variables of one stream): both without the merge's branch at every entry.
    if (!x || !y) {
        const SparseDerivatives& only = x ? *x : *y;
        const V k = x ? a : b;
        SparseDerivatives* out = create(only.size_);
        for (const Entry& e : only) out->append(e.first, k * e.second);
        return out;
    }
    const auto sameDirection = [](const Entry& p, const Entry& q) { return p.first == q.first; };
    if (x->size_ == y->size_ && std::equal(x->begin(), x->end(), y->begin(), sameDirection)) {
        SparseDerivatives* out = create(x->size_);
        for (int i = 0; i < x->size_; ++i) {
            const Entry &p = x->entries()[i], &q = y->entries()[i];
            out->append(p.first, a * p.second + b * q.second);
        }
        return out;
    }
    const Entry *ix = x->begin(), *xEnd = x->end();
    const Entry *iy = y->begin(), *yEnd = y->end();
    SparseDerivatives* out = create(int((xEnd - ix) + (yEnd - iy)));
    while (ix != xEnd || iy != yEnd) {
        if (iy == yEnd || (ix != xEnd && ix->first < iy->first)) {
            out->append(ix->first, a * ix->second);
            ++ix;
        } else if (ix == xEnd || iy->first < ix->first) {
            out->append(iy->first, b * iy->second);
            ++iy;
        } else {
            out->append(ix->first, a * ix->second + b * iy->second);
            ++ix;
            ++iy;
        }
    }
    return out;
}

template <typename V> auto SparseDerivatives<V>::lowerBound(int i) const -> const Entry* {
    return std::lower_bound(begin(), end(), i, [](const Entry& e, int d) { return e.first < d; });
}

template <typename V> V SparseDerivatives<V>::derivative(int i) const {
    const Entry* it = lowerBound(i);
    return it != end() && it->first == i ? it->second : V(0);
}

template <typename V>
SparseDerivatives<V>* SparseDerivatives<V>::set(SparseDerivatives* list, int i, V d) noexcept {
    if (!list) list = create(4);
    const int at = int(list->lowerBound(i) - list->begin());
    if (at < list->size_ && list->entries()[at].first == i) {
        list->entries()[at].second = d;
        return list;
    }
    if (list->size_ == list->capacity_) {
        SparseDerivatives* grown = copy(*list, 2 * list->capacity_ + 1);
        destroy(list);
        list = grown;
    }
    Entry* entries = list->entries();
    std::memmove(static_cast<void*>(entries + at + 1), entries + at, sizeof(Entry) * (list->size_ - at));
    new (entries + at) Entry(i, d);
    ++list->size_;
    return list;
}

template class SparseDerivatives<double>;
