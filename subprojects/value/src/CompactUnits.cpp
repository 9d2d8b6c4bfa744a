#include <tarvo/value/CompactUnits.h>

static_assert(ndimensions * 7 == 63, "nine lanes of seven bits below the invalid bit");

CompactUnits::CompactUnits(const UnitArray& units) : bits_(0) {
    if (units.invalid()) {
        bits_ = invalidBit;
        return;
    }
    for (int i = 0; i < ndimensions; ++i) {
        const int lane = units[i] + laneBias;
        if (lane < 0 || lane >= 2 * laneBias) {
            bits_ = invalidBit;
            return;
        }
        bits_ |= static_cast<uint64_t>(lane) << (laneBits * i);
    }
}

UnitArray CompactUnits::unpack() const {
    if (invalid()) return UnitArray(invalidUnitExponent);
    UnitArray units;
    for (int i = 0; i < ndimensions; ++i)
        units[i] = static_cast<int>((bits_ >> (laneBits * i)) & (2 * laneBias - 1)) - laneBias;
    return units;
}

bool CompactUnits::divide(int divisor) {
    UnitArray units = unpack();
    for (int i = 0; i < ndimensions - 1; ++i)
        if (units[i] % divisor != 0) return false;
    units /= divisor;
    *this = CompactUnits(units);
    return true;
}
