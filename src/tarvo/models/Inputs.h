#ifndef TARVO_MODELS_INPUTS_H
#define TARVO_MODELS_INPUTS_H

#include <tarvo/core/Model.h>

#include <string>
#include <utility>
#include <vector>

// A value as an input of the case.
void setInput(Value& q, const Value& value);
// The inputs of the feed `stream` of `sheet`: pressure, temperature, the flow option ("Nx" a molar flow
// Tphase.ndot, "Mx" a mass flow Tphase.mdot) with its flow, and the mole fractions of the named components;
// the components not named get none.
void setFeed(Model& sheet, const std::string& stream, const Value& P, const Value& T, const std::string& flowoption,
             const Value& flow, const std::vector<std::pair<std::string, double>>& x);

#endif
