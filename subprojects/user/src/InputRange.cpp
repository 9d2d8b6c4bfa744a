#include <tarvo/user/InputRange.h>

#include <cmath>
#include <sstream>

namespace Tarvo::User {

namespace {

// Whether the item's own tag ("x" of "FEED:Tphase.x[CH4]") names a fraction.
bool namesFraction(const std::string& path) {
    const std::string name = path.substr(0, path.find('['));
    const auto separator = name.find_last_of(".:");
    const std::string tag = separator == std::string::npos ? name : name.substr(separator + 1);
    return tag == "x" || tag == "w" || tag == "fraction";
}

} // namespace

std::string inputRefusal(const std::string& path, const Value& item, double value) {
    static const Value kelvin(1.0, "K"), pascal(1.0, "Pa"), one(1.0);
    std::ostringstream why;
    why << "quantity " << path << ": " << value;
    if (!std::isfinite(value)) {
        why << " is not a finite number";
    } else if (item.sameUnits(kelvin) && value <= 0) {
        why << " K is not above 0 K";
    } else if (item.sameUnits(pascal) && value < 0) {
        why << " Pa is below 0 Pa";
    } else if (item.sameUnits(one) && (value < 0 || value > 1) && namesFraction(path)) {
        why << " is outside the range of a fraction, 0 to 1";
    } else {
        return {};
    }
    return why.str();
}

} // namespace Tarvo::User
