#include <tarvo/value/SparseDerivatives.h>

#include <algorithm>
#include <cstring>

template <typename V> SparseDerivatives<V>* SparseDerivatives<V>::create(int capacity) noexcept {
    static_assert(sizeof(SparseDerivatives) % alignof(Entry) == 0, "the entries follow the header aligned");
    void* block = ::operator new(sizeof(SparseDerivatives) + sizeof(Entry) * capacity);
    return new (block) SparseDerivatives(capacity);
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
    const Entry *ix = x ? x->begin() : nullptr, *xEnd = x ? x->end() : nullptr;
    const Entry *iy = y ? y->begin() : nullptr, *yEnd = y ? y->end() : nullptr;
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
