#include <tarvo/components/ListComponents.h>
#include <tarvo/units/MultiReactionTransfer.h>

using Tarvo::Persistency::Defaults;

MultiReactionTransfer::MultiReactionTransfer(const Defaults& defaults, uint32_t id, Persistency* persistency,
                                             Persistent* parent, Persistent* root)
    : MultiReaction<2>(defaults, id, persistency, parent, root) {
    addVariable(factor);
    factor.setOutput();
    addComponentVariables(theta, "theta", "Fractional conversion or stage cut", "", 0.5);
}

void MultiReactionTransfer::calculate(int) {
    if (!ready_()) return;
    for (int c = 0; c < NCOMPONENTS; ++c) {
        const Value received = inletFlow(0, c) * theta[c] + inletFlow(1, c) * (theta[c] - 1.0);
        transfer[1][c] = received;
        transfer[0][c] = -received;
    }
    factor = bound_();
}
