#ifndef TARVO_UTILITY_ENUMERATORINTERFACE_H
#define TARVO_UTILITY_ENUMERATORINTERFACE_H

#include <tarvo/utility/EnumeratorItem.h>

#include <string>
#include <vector>

namespace Tarvo::Utility {

// An enumeration with names and descriptions: compiled (SmartEnumerator) or made at run time
// (Tarvo::Core::Enumerator).
class EnumeratorInterface {
public:
    using const_iterator = std::vector<EnumeratorItem>::const_iterator;

    virtual ~EnumeratorInterface() = default;
    virtual const std::string& name() const = 0;
    virtual const std::string& description() const = 0;
    virtual const_iterator begin() const = 0;
    virtual const_iterator end() const = 0;
    virtual std::size_t size() const = 0;

    // {"name":...,"description":...,"options":[<item>,...]}, as the catalogue prints it.
    std::string json() const;
};

} // namespace Tarvo::Utility

#endif
