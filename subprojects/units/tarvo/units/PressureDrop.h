#ifndef TARVO_UNITS_PRESSUREDROP_H
#define TARVO_UNITS_PRESSUREDROP_H

#include <tarvo/value/Value.h>

#include <string>

class Model;

// The outlet pressure of a unit from its inlet pressure inP and the volume flow vdot, by `option`:
// "D" deltaP given, "P" the outlet pressure P given, "K" the flow coefficient K (kg/m7) given. Beyond
// beta times deltaPMax the drop is clipped ("D") or bent towards deltaPMax ("K"), with the warning
// "DeltaP clipped" on `model`. The other two of deltaP, P and K follow. Another option raises
// ErrorBrowsing in the name of `caller`.
void pressureDrop(Model* model, const std::string& option, Value& deltaP, const Value& deltaPMax,
                  const Value& beta, const Value& inP, Value& P, Value& K, const Value& vdot,
                  const std::string& caller);

#endif
