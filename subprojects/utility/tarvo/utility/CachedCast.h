#ifndef TARVO_UTILITY_CACHEDCAST_H
#define TARVO_UTILITY_CACHEDCAST_H

#include <cstddef>
#include <typeinfo>

namespace Tarvo::Utility {

// dynamic_cast<T>(p) for the casts that model code makes at every evaluation, where a search of the class
// hierarchy costs hundreds of instructions. Within objects of one complete type, with p at one place in them,
// the T sits at one distance from p: the distances found for the last few such types are kept, as are casts
// that failed. The key is the complete type with p's distance from the object's start, so that a class holding
// a base twice is told apart at each of its copies.
template <typename T, typename From> T cachedCast(From* p) {
    if (!p) return nullptr;
    struct Entry {
        const std::type_info* type = nullptr;
        std::ptrdiff_t top = 0, offset = 0;
        bool found = false;
    };
    // A few types take turns at one call site, as the phases of a stream do: one entry each, the oldest
    // making way for a new one.
    constexpr int ways = 4;
    thread_local Entry entries[ways];
    thread_local int oldest = 0;
    const auto* at = reinterpret_cast<const char*>(p);
    const std::type_info* type = &typeid(*p);
    const std::ptrdiff_t top = at - static_cast<const char*>(dynamic_cast<const void*>(p));
    for (const Entry& e : entries)
        if (e.type == type && e.top == top)
            return e.found ? reinterpret_cast<T>(const_cast<char*>(at) + e.offset) : nullptr;
    T target = dynamic_cast<T>(p);
    entries[oldest] = {type, top, target ? reinterpret_cast<const char*>(target) - at : 0, target != nullptr};
    oldest = (oldest + 1) % ways;
    return target;
}

} // namespace Tarvo::Utility

#endif
