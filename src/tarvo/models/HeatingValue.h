#ifndef TARVO_MODELS_HEATINGVALUE_H
#define TARVO_MODELS_HEATINGVALUE_H

#include <tarvo/core/Model.h>

#include <string>

// The lower heating value flow of the stream `stream` of `sheet`: the sum over the fuels of the table (methane
// alone) of the lower heating value of each times the stream's flow of it.
Value lowerHeatingValueFlow(Model& sheet, const std::string& stream);

#endif
