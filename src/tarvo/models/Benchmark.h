#ifndef TARVO_MODELS_BENCHMARK_H
#define TARVO_MODELS_BENCHMARK_H

#include <tarvo/models/ReferenceFlowSheet.h>

// The reference biogas plant without upgrading: the engine burns all the biogas, with the air flow that
// leaves 1 % oxygen by mass in the flue gas.
class Benchmark : public ReferenceFlowSheet {
public:
    Benchmark(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
              Persistent* root);

    void setup() override;
    void post(SolutionMode mode, int level) override;
    // The air flow for the residual oxygen.
    void makeUserEquations(std::list<Assignment*>::iterator& it) override;

    Quantity LHVin{"LHVin", "LHV-based thermal power input", "W", this, 0.0};
    Quantity etaL{"etaL", "Electric yield on LHV basis", "", this, 0.0};
};

#endif
