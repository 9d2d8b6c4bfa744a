#include <tarvo/value/SparseDerivatives.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

namespace {
// Capacities of 1, 2, 4, ... 2^(pooledClasses - 1) entries are pooled; larger lists are rare and go to the heap.
// Under the address sanitizer every list has a block of its own, so that a use after its end shows.
#if defined(__SANITIZE_ADDRESS__)
constexpr int pooledClasses = 0;
#else
constexpr int pooledClasses = 10;
#endif

// The power of two of the least pooled capacity that holds `capacity` entries; pooledClasses beyond them. Counted
// from the leading zeros, as every list that a solve makes and drops asks for it twice.
int sizeClass(int capacity) {
    const int k = capacity <= 1 ? 0 : 32 - __builtin_clz(static_cast<unsigned>(capacity - 1));
    return k < pooledClasses ? k : pooledClasses;
}

// A free block's first bytes link it to the next free block of its class.
struct FreeBlock {
    FreeBlock* next;
};
std::array<FreeBlock*, pooledClasses> freeBlocks{};
} // namespace

template <typename V> SparseDerivatives<V>* SparseDerivatives<V>::create(int capacity) noexcept {
    static_assert(sizeof(SparseDerivatives) % alignof(V) == 0, "the entries follow the header aligned");
    static_assert(sizeof(SparseDerivatives) >= sizeof(FreeBlock), "a free block holds its link");
    const int k = sizeClass(capacity);
    if (k < pooledClasses) capacity = 1 << k;
    void* block;
    if (k < pooledClasses && freeBlocks[k]) {
        block = freeBlocks[k];
        freeBlocks[k] = freeBlocks[k]->next;
    } else {
        block = ::operator new(sizeof(SparseDerivatives) + directionBytes(capacity) + sizeof(V) * capacity);
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
    std::memcpy(list->directions(), o.directions(), sizeof(int) * o.size_);
    std::memcpy(list->derivatives(), o.derivatives(), sizeof(V) * o.size_);
    list->size_ = o.size_;
    return list;
}

template <typename V>
SparseDerivatives<V>* SparseDerivatives<V>::combine(V a, const SparseDerivatives* x, V b,
                                                    const SparseDerivatives* y) noexcept {
    // In the largest plant's solve 30 % of the combinations meet a number without derivatives, and 43 % one with
    // the same directions (variables of one stream): both take the directions as they are and run over the
    // derivatives alone.
    if (!x || !y) {
        const V k = x ? a : b;
        return mapped(x ? *x : *y, [k](V d) { return k * d; });
    }
    const int nx = x->size_, ny = y->size_;
    const int *dx = x->directions(), *dy = y->directions();
    const V *vx = x->derivatives(), *vy = y->derivatives();
    if (nx == ny && std::memcmp(dx, dy, sizeof(int) * nx) == 0) {
        SparseDerivatives* out = create(nx);
        std::memcpy(out->directions(), dx, sizeof(int) * nx);
        V* to = out->derivatives();
        for (int i = 0; i < nx; ++i) to[i] = a * vx[i] + b * vy[i];
        out->size_ = nx;
        return out;
    }
    SparseDerivatives* out = create(nx + ny);
    // Written through pointers of the loop's own and counted once at the end: a count kept in the list would
    // be stored and loaded again at every entry, as a direction written may alias it.
    int* d = out->directions();
    V* v = out->derivatives();
    int ix = 0, iy = 0;
    while (ix < nx && iy < ny) {
        if (dx[ix] < dy[iy]) {
            *d++ = dx[ix];
            *v++ = a * vx[ix++];
        } else if (dy[iy] < dx[ix]) {
            *d++ = dy[iy];
            *v++ = b * vy[iy++];
        } else {
            *d++ = dx[ix];
            *v++ = a * vx[ix++] + b * vy[iy++];
        }
    }
    for (; ix < nx; ++ix) {
        *d++ = dx[ix];
        *v++ = a * vx[ix];
    }
    for (; iy < ny; ++iy) {
        *d++ = dy[iy];
        *v++ = b * vy[iy];
    }
    out->size_ = int(d - out->directions());
    return out;
}

template <typename V> int SparseDerivatives<V>::lowerBound(int i) const {
    return int(std::lower_bound(directions(), directions() + size_, i) - directions());
}

template <typename V> V SparseDerivatives<V>::derivative(int i) const {
    const int at = lowerBound(i);
    return at < size_ && directions()[at] == i ? derivatives()[at] : V(0);
}

template <typename V>
SparseDerivatives<V>* SparseDerivatives<V>::set(SparseDerivatives* list, int i, V d) noexcept {
    if (!list) list = create(4);
    const int at = list->lowerBound(i);
    if (at < list->size_ && list->directions()[at] == i) {
        list->derivatives()[at] = d;
        return list;
    }
    if (list->size_ == list->capacity_) {
        SparseDerivatives* grown = copy(*list, 2 * list->capacity_ + 1);
        destroy(list);
        list = grown;
    }
    const int tail = list->size_ - at;
    int* directions = list->directions();
    V* derivatives = list->derivatives();
    std::memmove(directions + at + 1, directions + at, sizeof(int) * tail);
    std::memmove(derivatives + at + 1, derivatives + at, sizeof(V) * tail);
    directions[at] = i;
    derivatives[at] = d;
    ++list->size_;
    return list;
}

template class SparseDerivatives<double>;
