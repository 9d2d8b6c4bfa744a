#ifndef TARVO_COMPONENTS_SRC_UNITVALUES_H
#define TARVO_COMPONENTS_SRC_UNITVALUES_H

#include <tarvo/value/Value.h>

// The units in which routes hand out what they compute on plain numbers: a number times its unit,
// built once, so that no unit string is looked up on a hot path.
namespace componentUnits {

inline const Value K(1.0, "K");
inline const Value Pa(1.0, "Pa");
inline const Value PaPerK(1.0, "Pa/K");
inline const Value JPerKmol(1.0, "J/kmol");
inline const Value JPerKmolK(1.0, "J/(kmol*K)");
inline const Value kmolPerM3(1.0, "kmol/m3");
inline const Value PaS(1.0, "Pa*s");
inline const Value WPerMK(1.0, "W/(m*K)");
inline const Value NPerM(1.0, "N/m");
// Subtracting these is the units check of a temperature or pressure argument.
inline const Value zeroK(0.0, "K");
inline const Value zeroPa(0.0, "Pa");

// f(T) in `unit`, with the derivatives of T carried through the slope dfdT (SI numbers).
inline Value ofTemperature(double f, double dfdT, const Value& T, const Value& unit) {
    return Value(Active::chain(f, dfdT, T.active())) * unit;
}

} // namespace componentUnits

#endif
