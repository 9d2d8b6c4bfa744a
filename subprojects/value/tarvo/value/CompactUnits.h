#ifndef TARVO_VALUE_COMPACTUNITS_H
#define TARVO_VALUE_COMPACTUNITS_H

#include <tarvo/value/UnitArray.h>

#include <cstdint>

// The nine exponents of a Value packed into one 64-bit word, so that the unit rules of an arithmetic
// operation cost two or three integer instructions and stay in registers. Each exponent e sits in a
// lane of seven bits as e + 64, which makes sums and differences of whole words lane-wise sums and
// differences; exponents run from -64 to 63, far beyond what physical quantities reach. The top bit
// marks invalid units. UnitArray stays the form in which exponents enter and leave (unit strings,
// texts, the store).
class CompactUnits {
public:
    constexpr CompactUnits() : bits_(bias) {}
    explicit CompactUnits(const UnitArray& units);
    static constexpr CompactUnits invalidUnits() { return CompactUnits(invalidBit); }

    UnitArray unpack() const;
    bool invalid() const { return bits_ & invalidBit; }
    bool dimensionless() const { return bits_ == bias; }
    bool operator==(CompactUnits o) const { return bits_ == o.bits_; }
    bool operator!=(CompactUnits o) const { return bits_ != o.bits_; }

    // Units of products and quotients; invalid stays invalid.
    friend CompactUnits operator+(CompactUnits a, CompactUnits b) {
        return CompactUnits((a.bits_ | b.bits_) & invalidBit ? invalidBit : a.bits_ + b.bits_ - bias);
    }
    friend CompactUnits operator-(CompactUnits a, CompactUnits b) {
        return CompactUnits((a.bits_ | b.bits_) & invalidBit ? invalidBit : a.bits_ - b.bits_ + bias);
    }
    CompactUnits operator-() const { return CompactUnits() - *this; }

    // The units of a square root: every exponent halved, the first eight required even; false when
    // they are not. Done on the whole word, as sqrt is common in model code.
    bool halve() {
        if (invalid() || (bits_ & lowOfFirstEight)) return false;
        if (bits_ & (uint64_t(1) << (laneBits * 8))) return divide(2); // an odd last exponent truncates
        bits_ = (bits_ >> 1) + bias / 2;
        return true;
    }
    // Every exponent divided by `divisor`, truncating; the first eight required divisible.
    bool divide(int divisor);

private:
    static constexpr int laneBits = 7;
    static constexpr int laneBias = 64;
    static constexpr uint64_t invalidBit = uint64_t(1) << 63;
    static constexpr uint64_t bias = 0x0102040810204081ULL * laneBias;  // 64 in each of the nine lanes
    static constexpr uint64_t lowOfFirstEight = 0x0002040810204081ULL; // bit 0 of lanes 0 to 7

    constexpr explicit CompactUnits(uint64_t bits) : bits_(bits) {}
    uint64_t bits_;
};

#endif
