#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/StreamOneSolid.h>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::PhaseIndex;

StreamOneSolid::StreamOneSolid(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                               Persistent* root)
    : Model(defaults, id, persistency, parent, root), Stream(defaults, id, persistency, parent, root),
      embeddedTypePhase("embeddedTypePhase", "type of the embedded phase",
                        retrieveString(defaults, id, persistency, "embeddedTypePhase", "PhaseIdeal<vapor>"), this) {
    addVariable(embeddedTypePhase);
    addTotalPhase("PhaseTotal", persistency);
    fluid_ = my_cast<Phase::MassMolarProperties*>(
        addTypedPhase(embeddedTypePhase.value(), "Embedded fluid phase", persistency), "StreamOneSolid::StreamOneSolid");
    fluidIndex_ = static_cast<PhaseIndex>(indexintegers_.back());
    solid_ = my_cast<Phase::MassMolarProperties*>(
        addPhase("PhaseIdeal<solid>", "Sphase", "Solid phase", persistency, PhaseIndex::solid1),
        "StreamOneSolid::StreamOneSolid");
}

void StreamOneSolid::prepare_residuals() {
    calculateInertSolids(static_cast<const Phase::MassMolar&>(*Tphase).x.value());
    for (int i = 0; i < NCOMPONENTS; ++i) {
        fluid_->x[i] = fluidZ_[i];
        solid_->x[i] = solidX_[i];
    }
    fluid_->fraction = 1.0 - solidShare_;
    solid_->fraction = solidShare_;
    fluid_->calculateProperties(FlashBase::P, FlashBase::T, true);
    solid_->calculateProperties(FlashBase::P, FlashBase::T, true);
}

int StreamOneSolid::calculateResidualsEquilibrium(std::vector<Value>&, uint32_t) { return 0; }

void StreamOneSolid::updateFlash() {
    prepare_residuals();
    Stream::updateFlash();
}

const Value& StreamOneSolid::Fraction(const PhaseIndex& index, bool) const {
    if (index == PhaseIndex::solid1) return solidShare_;
    if (index == fluidIndex_) {
        fluidShare_ = 1.0 - solidShare_;
        return fluidShare_;
    }
    return zero;
}

Vector StreamOneSolid::X(const PhaseIndex& index) const {
    if (index == PhaseIndex::solid1) return solidX_;
    if (index == fluidIndex_) return fluidZ_;
    return Vector(NCOMPONENTS, zero);
}
