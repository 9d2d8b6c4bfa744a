#include <tarvo/components/ListComponents.h>
#include <tarvo/streams/StreamSimple.h>
#include <tarvo/utility/FunctionName.h>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::FlashMode;
using Tarvo::Utility::PhaseIndex;
using Tarvo::Utility::SmartEnumerator;

StreamBaseSimple::StreamBaseSimple(const Defaults& defaults, uint32_t id, Persistency* persistency,
                                   Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), Stream(defaults, id, persistency, parent, root) {}

void StreamBaseSimple::addSimplePhases(int nVapor, int nLiquid, int nSolid, Persistency* persistency) {
    addTotalPhase("PhaseSimpleTotal", persistency);
    const int vapor = nVapor ? static_cast<int>(phases_.size()) : -1;
    if (nVapor) addPhase("PhaseSimple<vapor>", "Vphase", "Vapor phase", persistency, PhaseIndex::vapor);
    const int liquid = nLiquid ? static_cast<int>(phases_.size()) : -1;
    if (nLiquid) addPhase("PhaseSimple<liquid>", "Lphase", "Liquid phase", persistency, PhaseIndex::liquid1);
    const int solid = nSolid ? static_cast<int>(phases_.size()) : -1;
    if (nSolid) addPhase("PhaseSimple<solid>", "Sphase", "Solid phase", persistency, PhaseIndex::solid1);
    const int fluid = liquid >= 0 ? liquid : vapor >= 0 ? vapor : solid;
    route_.resize(NCOMPONENTS);
    for (int i = 0; i < NCOMPONENTS; ++i) route_[i] = components[i]->isSolid() && solid >= 0 ? solid : fluid;
    for (Phase::Mass* phase : phases_)
        if (phase != Tphase) phase->fraction = 1.0 / nphases();
}

void StreamBaseSimple::setFlash(const FlashMode& fm) {
    if (fm != FlashMode::PT)
        throw ErrorSmartEnum(TARVO_FUNCTION, "Flash mode", SmartEnumerator<FlashMode>::item(fm).name());
    Stream::setFlash(fm);
}

void StreamBaseSimple::updateFlash() {
    const double total = Tphase->mdot.toDouble();
    for (std::size_t k = 0; k < phases_.size(); ++k) {
        Phase::Mass* phase = phases_[k];
        if (phase == Tphase) continue;
        for (int i = 0; i < NCOMPONENTS; ++i) {
            if (route_[i] == static_cast<int>(k))
                phase->mdotcomps[i] = Tphase->mdotcomps[i];
            else
                phase->mdotcomps[i].clear();
        }
        phase->calculateM_();
        phase->fraction = total > 0 ? phase->mdot / Tphase->mdot : Value(1.0 / nphases());
    }
    Stream::updateFlash();
}

int StreamBaseSimple::calculateResidualsEquilibrium(std::vector<Value>&, uint32_t) { return 0; }

template class StreamSimple<0, 1, 0>;
template class StreamSimple<0, 0, 1>;
template class StreamSimple<1, 0, 0>;
template class StreamSimple<0, 1, 1>;
template class StreamSimple<1, 1, 1>;
