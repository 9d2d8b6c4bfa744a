#include <tarvo/utility/Banner.h>

#include <map>

namespace Tarvo::Utility {

namespace {

struct BannerEntry {
    std::string name;
    std::string text;
};

// Ordered by priority; entries of equal priority keep the order in which they were added.
std::multimap<int, BannerEntry>& bannerEntries() {
    static std::multimap<int, BannerEntry> entries;
    return entries;
}

constexpr int headingColumns = 72;
constexpr int closingColumns = 76;

} // namespace

void addBannerEntry(int priority, const std::string& name, const std::string& text) {
    bannerEntries().emplace(priority, BannerEntry{name, text});
}

void clearBanner() { bannerEntries().clear(); }

void printBanner(std::ostream& out) {
    for (const auto& [priority, entry] : bannerEntries()) {
        const int free = headingColumns - static_cast<int>(entry.name.size());
        const int left = (free > 0 ? free / 2 : 0) + 1;
        const int right = (free > 0 ? free - free / 2 : 0) + 1;
        out << " * " << std::string(left, '*') << ' ' << entry.name << ' ' << std::string(right, '*') << '\n';
        out << " * " << entry.text << '\n';
    }
    out << " * " << std::string(closingColumns, '*') << '\n';
    out << " * Results depend on the models and data you choose: check them before use.\n";
    out << " * " << std::string(closingColumns, '*') << '\n';
    out << '\n';
    out.flush();
}

} // namespace Tarvo::Utility
