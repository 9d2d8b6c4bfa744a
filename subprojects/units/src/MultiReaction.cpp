#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMassMolar.h>
#include <tarvo/units/MultiReaction.h>

#include <algorithm>

using Tarvo::Persistency::Defaults;

namespace {
// A change of flow below this, in kmol/s, consumes the component.
constexpr double consumed = 2.220446049250313e-15;
} // namespace

template <int N>
MultiReaction<N>::MultiReaction(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                                Persistent* root)
    : Model(defaults, id, persistency, parent, root) {
    addVariable(nPhases);
    for (Quantity* q : {&z, &actz, &conv})
        addVariable(*q);
    addVariable(keyphase);
    addVariable(keycomp);
    actz.setOutput();
    coeff.resize(N); // sized first: the item maps point into the inner vectors
    transfer.resize(N);
    for (int p = 0; p < N; ++p) {
        const std::string side = "[" + std::to_string(p) + "]";
        addComponentVariables(coeff[p], "coeff" + side,
                              "Molar stoichiometric coefficient in reacting phase " + std::to_string(p), "", 0.0);
        addComponentVariables(transfer[p], "transfer" + side,
                              "Transfer in reacting phase " + std::to_string(p), "kmol/s", 0.0);
        for (Quantity& q : transfer[p])
            q.setOutput();
    }
}

template <int N> bool MultiReaction<N>::ready_() {
    resetErrors();
    active_ = false;
    for (const Phase::MassMolar* side : sides_)
        if (!side) {
            reportError("Nothing connected, nothing to do");
            return false;
        }
    double flow = 0;
    for (const Phase::MassMolar* side : sides_)
        flow += side->ndot.toDouble();
    if (!(flow > 0.0)) {
        reportError("Zero inlet streams, bypassing block");
        return false;
    }
    for (int p = 0; p < N; ++p) {
        inletFlows_[p].resize(NCOMPONENTS);
        for (int c = 0; c < NCOMPONENTS; ++c)
            inletFlows_[p][c] = sides_[p]->ndotcomps[c];
    }
    active_ = true;
    return true;
}

template <int N> bool MultiReaction<N>::phasesReady_() {
    resetErrors();
    if (nPhases.value() != N) {
        reportError("Number of reacting phases does not match");
        return false;
    }
    return ready_();
}

template <int N> void MultiReaction<N>::calculate(int) {
    if (!phasesReady_()) return;
    const int key = keycomp.value(), phase = keyphase.value();
    if (key < 0) {
        reportError("keycomp uninitialized, bypassing block");
        active_ = false;
        return;
    }
    if (key >= NCOMPONENTS || phase < 0 || phase >= N || coeff[phase][key].toDouble() == 0.0) {
        reportError("incorrect keycomp, bypassing block");
        active_ = false;
        return;
    }
    conv = -z * inletFlow(phase, key) / coeff[phase][key];
    for (int p = 0; p < N; ++p)
        for (int c = 0; c < NCOMPONENTS; ++c)
            transfer[p][c] = coeff[p][c] * conv;
    bound_();
    conv = transfer[phase][key] / coeff[phase][key];
    actz = inletFlow(phase, key).toDouble() == 0.0 ? Value(0.0) : -conv * coeff[phase][key] / inletFlow(phase, key);
}

template <int N> double MultiReaction<N>::bound_() {
    // The factor as a Value of the component that limits it: the transfers scaled by it carry the derivatives
    // of that bound, which a Newton step through a bounded transfer needs.
    Value factor(1.0);
    for (int p = 0; p < N; ++p)
        for (int c = 0; c < NCOMPONENTS; ++c) {
            const double change = transfer[p][c].toDouble(), flow = inletFlow(p, c).toDouble();
            if (!(change < -consumed && -change > flow)) continue;
            reportWarning("Conversion too high for component " + components[c]->name);
            if (flow / -change < factor.toDouble()) factor = inletFlow(p, c) / -transfer[p][c];
        }
    if (factor.toDouble() < 1.0)
        for (auto& side : transfer)
            for (Quantity& t : side)
                t *= factor;
    return factor.toDouble();
}

template <int N> void MultiReaction<N>::apply() {
    if (!active_) return;
    for (int p = 0; p < N; ++p) {
        Phase::MassMolar& side = *sides_[p];
        side.ndot.clear();
        for (int c = 0; c < NCOMPONENTS; ++c) {
            side.ndotcomps[c] = inletFlow(p, c) + transfer[p][c];
            side.ndot += side.ndotcomps[c];
        }
    }
}

template class MultiReaction<2>;
