#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/StreamOne.h>

using Tarvo::Persistency::Defaults;

StreamOne::StreamOne(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                     Persistent* root)
    : Model(defaults, id, persistency, parent, root), Stream(defaults, id, persistency, parent, root),
      embeddedTypePhase("embeddedTypePhase", "type of the embedded phase",
                        retrieveString(defaults, id, persistency, "embeddedTypePhase", "PhaseIdeal<vapor>"), this) {
    addVariable(embeddedTypePhase);
    addTotalPhase("PhaseTotal", persistency);
    phase_ = my_cast<Phase::MassMolarProperties*>(
        addTypedPhase(embeddedTypePhase.value(), "Embedded phase", persistency), "StreamOne::StreamOne");
    phase_->fraction = 1.0;
}

void StreamOne::prepare_residuals() {
    takeComposition_();
    phase_->calculateProperties(FlashBase::P, FlashBase::T, true);
}

void StreamOne::prepareComposition() {
    if (!phase_->propertiesOfStateAlone() || !hasProperties()) return prepare_residuals();
    takeComposition_();
}

void StreamOne::takeComposition_() {
    const auto& total = static_cast<const Phase::MassMolar&>(*Tphase);
    for (int i = 0; i < NCOMPONENTS; ++i) phase_->x[i] = total.x[i];
}

int StreamOne::calculateResidualsEquilibrium(std::vector<Value>&, uint32_t) { return 0; }

void StreamOne::updateFlash() {
    phase_->fraction = 1.0;
    Stream::updateFlash();
}
