#include <tarvo/persistency/Defaults.h>

namespace Tarvo::Persistency {

int Defaults::getInteger(const std::string& name) const {
    const auto it = integerOptions_.find(name);
    return it == integerOptions_.end() ? -1 : it->second;
}

std::string Defaults::getString(const std::string& name) const {
    const auto it = stringOptions_.find(name);
    return it == stringOptions_.end() ? std::string() : it->second;
}

std::ostream& operator<<(std::ostream& out, const Defaults& defaults) {
    out << "[ si [";
    for (const auto& [name, value] : defaults.integerOptions()) out << "[ " << name << ", " << value << "] ";
    out << "] ss [";
    for (const auto& [name, value] : defaults.stringOptions()) out << "[ " << name << ", " << value << "] ";
    return out << "]]";
}

} // namespace Tarvo::Persistency
