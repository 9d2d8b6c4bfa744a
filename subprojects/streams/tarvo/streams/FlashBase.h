#ifndef TARVO_STREAMS_FLASHBASE_H
#define TARVO_STREAMS_FLASHBASE_H

#include <tarvo/phases/StreamInterface.h>
#include <tarvo/utility/SmartEnumerator.h>
#include <tarvo/value/Value.h>

#include <cstdint>
#include <vector>

// The state of a flash and what a stream supplies to it. The flash's temperature and pressure are its
// own unknowns, apart from the items of the stream: the stream copies them over after a solve, as far as
// the specification leaves them free.
class FlashBase : public virtual StreamInterface {
public:
    using FlashMode = Tarvo::Utility::FlashMode;
    using PhaseIndex = Tarvo::Utility::PhaseIndex;

    // The stream pushes the unknowns into its phases and computes what the residuals need.
    virtual void prepare_residuals() {}
    // The same for a step that works out the phases' properties at the stream's state right after: a phase
    // whose properties are those of the state alone need not have them worked out here too.
    virtual void prepareComposition() { prepare_residuals(); }
    // Residuals of phase equilibrium from y[offset] on; returns how many it wrote.
    virtual int calculateResidualsEquilibrium(std::vector<Value>& y, uint32_t offset) = 0;
    // A start of the equilibrium from the state that the stream's phases hold.
    virtual void estimateFlash() {}
    // Phases with a density unknown take it from an ideal estimate; none here.
    virtual void estimateEos(const Value& /*P*/, const Value& /*T*/) {}
    // Residuals of phases with a density unknown; none here.
    virtual int calculateResidualsEos(std::vector<Value>& /*y*/, uint32_t /*offset*/) { return 0; }
    // The density unknowns of those phases, in the order of their residuals.
    virtual std::vector<Value*> densityUnknowns() { return {}; }
    // Each of those phases takes the density of its own type at the flash's state and its present
    // composition, as a point of the start's searches needs; false where the stream has none.
    virtual bool settleDensities() { return false; }
    // The pressure at which the stream has the molar density rho.
    virtual Value calculateTotalP(const Value& rho) = 0;
    virtual Value calculateTotalRho() = 0;
    virtual Value calculateTotalH() = 0;
    virtual Value calculateTotalS() = 0;

    FlashMode flashMode = FlashMode::PT;
    bool zeroFlow = false;
    Value T{298.15, "K"};
    Value P{101325.0, "Pa"};
    Value Pset{101325.0, "Pa"};
    Value Tset{298.15, "K"};
    Value Hset{0.0, "J/kmol"};
    Value Sset{0.0, "J/(kmol*K)"};
    Value rhoset{1.0, "kmol/m3"};
};

#endif
