#ifndef TARVO_UNITS_TESTS_BENCH_H
#define TARVO_UNITS_TESTS_BENCH_H

#include <tarvo/components/ListComponents.h>
#include <tarvo/core/Model.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>

#include <utility>
#include <vector>

// A root that holds units and streams as a flowsheet would, but leaves the connecting to the test.
class Bench : public Model {
public:
    using Model::Model;
    Tarvo::Utility::Category category() const override { return Tarvo::Utility::Category::flowsheet; }
    void calculate(int) override {}
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }
};

// A feed of ndot kmol/s with the mole fractions given by component index, all others zero, at P in Pa and
// T in K; the caller calculates it, or lets the flowsheet do so.
inline void setMoleFractions(Stream& s, double ndot, const std::vector<std::pair<int, double>>& x, double P,
                             double T) {
    s.flowoption = "Nx";
    s.Tphase->totalFlow() = Value(ndot, "kmol/s");
    for (int i = 0; i < NCOMPONENTS; ++i)
        s.Tphase->frac(i) = 0.0;
    for (const auto& [i, xi] : x)
        s.Tphase->frac(i) = xi;
    s.P = Value(P, "Pa");
    s.T = Value(T, "K");
}

// The enthalpy flow of a stream, W, from the phase models at its state: each phase's molar enthalpy at (P, T)
// and its own composition, times its molar flow. Independent of the enthalpy that the stream keeps.
inline double enthalpyFlow(Stream& s) {
    double sum = 0;
    for (Phase::Mass* phase : s.phases()) {
        if (phase == s.Tphase) continue;
        auto& p = dynamic_cast<Phase::MassMolarProperties&>(*phase);
        sum += p.ndot.toDouble() * p.calculate_H(s.P, s.T).toDouble();
    }
    return sum;
}

#endif
