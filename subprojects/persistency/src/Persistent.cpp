#include <tarvo/persistency/Persistent.h>

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

#include <ctime>
#include <random>

namespace {

// Version-4 UUIDs from a Mersenne twister seeded once from the system's entropy source.
std::string newUuid() {
    static std::mt19937 engine = [] {
        std::random_device entropy;
        std::seed_seq seed{entropy(), entropy(), entropy(), entropy(), entropy(), entropy(), entropy(), entropy()};
        return std::mt19937(seed);
    }();
    static boost::uuids::basic_random_generator<std::mt19937> generator(engine);
    return boost::uuids::to_string(generator());
}

} // namespace

Persistent::Persistent(const std::string& tag, const std::string& description, Persistent* parent)
    : Item(tag, description, parent ? parent : this), uuid_(newUuid()),
      createdAt_(static_cast<double>(std::time(nullptr))) {}
