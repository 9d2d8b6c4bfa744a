#ifndef TARVO_UTILITY_CACHEDCAST_H
#define TARVO_UTILITY_CACHEDCAST_H

#include <cstddef>
#include <typeinfo>

namespace Tarvo::Utility {

// dynamic_cast<T>(p) for the casts that model code makes at every evaluation, where a search of the class
// hierarchy costs hundreds of instructions. Within objects of one complete type, with p at one place in them,
// the T sits at one distance from p: the distance found for the last such type is kept, as is a cast that
// failed. The key is the complete type with p's distance from the object's start, so that a class holding a
// base twice is told apart at each of its copies.
template <typename T, typename From> T cachedCast(From* p) {
    if (!p) return nullptr;
    struct Last {
        const std::type_info* type = nullptr;
        std::ptrdiff_t top = 0, offset = 0;
        bool found = false;
    };
    thread_local Last last;
    const auto* at = reinterpret_cast<const char*>(p);
    const std::type_info* type = &typeid(*p);
    const std::ptrdiff_t top = at - static_cast<const char*>(dynamic_cast<const void*>(p));
    if (type == last.type && top == last.top)
        return last.found ? reinterpret_cast<T>(const_cast<char*>(at) + last.offset) : nullptr;
    T target = dynamic_cast<T>(p);
    last = {type, top, target ? reinterpret_cast<const char*>(target) - at : 0, target != nullptr};
    return target;
}

} // namespace Tarvo::Utility

#endif
