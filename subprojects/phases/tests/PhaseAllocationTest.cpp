#include "PhaseTestSupport.h"

#include <tarvo/phases/PhaseGeneric.h>
#include <tarvo/phases/PhaseTotal.h>

#include <cstdlib>
#include <new>
#include <vector>

// Phases are evaluated inside every flash, millions of times in a flowsheet: their balances and property
// calls must not touch the heap. This executable counts the calls of the global operator new while a
// test asks it to.

namespace {
bool counting = false;
long allocations = 0;

// Counts the allocations made while it lives.
struct AllocationCounter {
    AllocationCounter() {
        allocations = 0;
        counting = true;
    }
    ~AllocationCounter() { counting = false; }
    long count() const { return allocations; }
};
} // namespace

void* operator new(std::size_t size) {
    if (counting) ++allocations;
    if (void* p = std::malloc(size ? size : 1)) return p;
    throw std::bad_alloc();
}
// The replacements pair malloc with free. Where the compiler inlines them into a test's creation it takes the
// operator new there for the standard one, and would call the pair mismatched.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
#pragma GCC diagnostic pop

namespace {
// A stream of a vapor and a liquid at fixed fractions, for the total phase.
class VaporLiquid : public StreamInterface {
public:
    std::vector<Phase::Mass*> all;
    const std::vector<Phase::Mass*>& phases() const override { return all; }
    const Value& phaseFraction(const Phase::Mass& phase) const override { return phase.fraction; }
    Phase::Mass* findPhase(const Tarvo::Utility::PhaseIndex&) const override { return nullptr; }
    const Value& Fraction(const Tarvo::Utility::PhaseIndex&, bool) const override { return one; }
    Vector X(const Tarvo::Utility::PhaseIndex&) const override { return {}; }
};
} // namespace

TEST_F(PhaseTest, BalancesAndPropertiesOfPhasesDoNotAllocate) {
    using Mode = Tarvo::Utility::MassBalanceMode;
    auto vapor = make<Phase::Generic>("PhaseIdeal<vapor>");
    auto liquid = make<Phase::Generic>("PhaseIdeal<liquid>");
    auto total = make<PhaseTotal>("PhaseTotal");
    VaporLiquid stream;
    stream.all = {total.get(), vapor.get(), liquid.get()};
    total->setStream(&stream);
    vapor->fraction = 0.4;
    liquid->fraction = 0.6;
    const Value P(3.0, "bar"), T(330.0, "K");

    AllocationCounter counter;
    for (Phase::Generic* phase : {vapor.get(), liquid.get()}) {
        for (Mode mode : {Mode::Nx, Mode::Mx, Mode::Nw, Mode::Mw, Mode::N, Mode::M}) phase->calculateX(mode);
        phase->calculate(0);
        phase->calculateProperties(P, T, true);
        phase->calculateProperties(P, T, false);
        phase->prepare(T);
        phase->preparefugacity(P, T);
        for (int i = 0; i < NCOMPONENTS; ++i) phase->fugacity(i);
        phase->mu(P, T);
        phase->kappa(P, T);
        phase->sigma(P, T);
        phase->calculate_P(phase->calculate_rho(P, T), T);
    }
    *vapor += *liquid;
    *vapor -= *liquid;
    *vapor *= Value(2.0);
    total->calculate(0);
    total->calculateProperties(P, T, true);
    EXPECT_EQ(counter.count(), 0);
}
