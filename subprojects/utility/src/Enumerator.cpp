#include <tarvo/utility/Enumerator.h>
#include <tarvo/utility/EnumeratorInterface.h>

#include <sstream>

namespace Tarvo::Utility {

// Strings go in as they stand: the catalogue text escapes nothing.
std::string EnumeratorItem::json() const {
    return "{\"name\":\"" + name_ + "\",\"description\":\"" + description_ + "\"}";
}

std::string EnumeratorInterface::json() const {
    std::ostringstream out;
    out << "{\"name\":\"" << name() << "\",\"description\":\"" << description() << "\",\"options\":[";
    const char* separator = "";
    for (auto it = begin(); it != end(); ++it) {
        out << separator << it->json();
        separator = ",";
    }
    out << "]}";
    return out.str();
}

} // namespace Tarvo::Utility

namespace Tarvo::Core {

namespace {
std::vector<Enumerator>& kernelList() {
    static std::vector<Enumerator> list;
    return list;
}
} // namespace

void addEnumerator(const Enumerator& enumerator) { kernelList().push_back(enumerator); }

const std::vector<Enumerator>& enumerators() { return kernelList(); }

const Enumerator* findEnumerator(const std::string& name) {
    for (const Enumerator& e : kernelList())
        if (e.name() == name) return &e;
    return nullptr;
}

void clearEnumerators() { kernelList().clear(); }

} // namespace Tarvo::Core
