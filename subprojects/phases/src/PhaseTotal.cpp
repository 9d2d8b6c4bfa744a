#include <tarvo/phases/PhaseTotal.h>

using Tarvo::Persistency::Defaults;

PhaseTotal::PhaseTotal(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                       Persistent* root)
    : MassMolarProperties(defaults, id, persistency, parent, root) {}

template <typename Visit> void PhaseTotal::forEachPhase_(const char* function, Visit visit) const {
    if (!stream_) throw ErrorRunTime(function, "total phase " + tag() + " is not linked to a stream");
    for (Phase::Mass* phase : stream_->phases()) {
        // The stream's total is this one, which a stream has once: a cast to tell it costs more than a sum.
        if (phase == static_cast<const Phase::Mass*>(this)) continue;
        const Value& f = stream_->phaseFraction(*phase);
        if (f.toDouble() <= 0) continue;
        visit(*my_cast_in<Phase::MassMolarProperties*>(phase, function), f);
    }
}

const Value& PhaseTotal::calculate_rho(const Value& P, const Value& T) {
    v_.clear();
    forEachPhase_("PhaseTotal::calculate_rho",
                  [&](Phase::MassMolarProperties& phase, const Value& f) { v_ += f / phase.calculate_rho(P, T); });
    rho_ = 1.0 / v_;
    return rho_;
}

const Value& PhaseTotal::calculate_H(const Value&, const Value&) {
    H_.clear();
    forEachPhase_("PhaseTotal::calculate_H",
                  [&](Phase::MassMolarProperties& phase, const Value& f) { H_ += f * phase.H; });
    return H_;
}

const Value& PhaseTotal::calculate_Cp(const Value&, const Value&) {
    Cp_.clear();
    forEachPhase_("PhaseTotal::calculate_Cp",
                  [&](Phase::MassMolarProperties& phase, const Value& f) { Cp_ += f * phase.Cp; });
    return Cp_;
}

const Value& PhaseTotal::calculate_S(const Value&, const Value&) {
    S_.clear();
    forEachPhase_("PhaseTotal::calculate_S",
                  [&](Phase::MassMolarProperties& phase, const Value& f) { S_ += f * phase.S; });
    return S_;
}

const Value& PhaseTotal::calculate_P(const Value&, const Value&) {
    static const Value fixed(1e10, "Pa");
    return fixed;
}

Value PhaseTotal::mu(const Value&, const Value&) { return Value(1e10, "Pa*s"); }

Value PhaseTotal::kappa(const Value&, const Value&) { return Value(1e10, "W/(m*K)"); }

Value PhaseTotal::sigma(const Value&, const Value&) { return Value(0.0, "N/m"); }

const Value& PhaseTotal::fugacity(int) { return one; }
