#ifndef TARVO_MODELS_TESTS_PLANTCHECKS_H
#define TARVO_MODELS_TESTS_PLANTCHECKS_H

#include <tarvo/core/Model.h>

#include <string>
#include <vector>

// Checks of a calculated flowsheet, worked out here from the values that it holds (as read back from the
// store), without the kernel's own balances or module code.

// Every lumped membrane module inside `sheet`, the stages of a staged one too, against its equations from its
// inlets and design items: the pressure ratio, the permeation factors, the share of each component that
// permeates (one feed: at the estimated stage cut; two feeds: at the inlet or the average compositions, less
// what a side does not hold) and the stage cut. Flows agree to `tolerance` of the module's inlet flow.
// Returns the number of modules checked.
int expectModuleEquations(Model& sheet, double tolerance);

// What crosses the boundary of `sheet` (each torn recycle counted as a product and a feed) and its units:
// per component, the flows out against those in and what one reaction with the coefficients `reaction` (by
// component index; empty for none) makes of them, to `flowTolerance` of the total flow in; the enthalpy
// flows in and out against the duties that the units take out (a compressor's fluid power as work put in),
// to `energyTolerance` of the largest term.
void expectPlantBalances(Model& sheet, double flowTolerance, double energyTolerance,
                         const std::vector<double>& reaction = {});

// The electric power of the compressors inside `sheet`, at any depth.
double compressorPower(Model& sheet);

// The counts of "cut" streams of `sheet`: those whose recycle a copy from the source opens.
int cutsOf(Model& sheet);

#endif
