#ifndef TARVO_COMPONENTS_COMPONENTINTERFACE_H
#define TARVO_COMPONENTS_COMPONENTINTERFACE_H

#include <tarvo/value/Value.h>

// The constants of a pure species. All but vc return references to stored values; vc is derived.
class ComponentInterface {
public:
    virtual ~ComponentInterface() = default;
    virtual const Value& mw() const = 0;      // molecular weight, kg/kmol
    virtual const Value& Pc() const = 0;      // critical pressure, Pa
    virtual const Value& Tc() const = 0;      // critical temperature, K
    virtual Value vc() const = 0;             // critical molar volume, m3/kmol
    virtual const Value& zc() const = 0;      // critical compressibility
    virtual const Value& omega() const = 0;   // acentric factor
    virtual const Value& diffvol() const = 0; // diffusion volume
    virtual const Value& vb() const = 0;      // molar volume at the normal boiling point, m3/kmol
    virtual const Value& dh0() const = 0;     // enthalpy of formation of the ideal gas at 298.15 K, J/kmol
    virtual const Value& dg0() const = 0; // Gibbs energy of formation of the ideal gas at 298.15 K, J/kmol
};

#endif
