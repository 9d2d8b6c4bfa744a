#ifndef TARVO_STREAMS_STREAMSIMPLE_H
#define TARVO_STREAMS_STREAMSIMPLE_H

#include <tarvo/streams/Stream.h>

// A stream of mass balances only: phases without properties, and no equilibrium. Each component travels
// whole in one phase: a solid in the solid phase, anything else in the liquid, or the vapor where the
// stream has no liquid; with neither, in the solid.
class StreamBaseSimple : public Stream {
public:
    StreamBaseSimple(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                     Persistent* parent, Persistent* root);

    // Temperature and pressure are all that a simple stream can be given.
    void setFlash(const FlashMode& fm) override;
    // Routes each component of the total to its phase.
    void updateFlash() override;
    int calculateResidualsEquilibrium(std::vector<Value>& y, uint32_t offset) override;

protected:
    // The phases of the stream, in the order vapor, liquid, solid.
    void addSimplePhases(int nVapor, int nLiquid, int nSolid, Persistency* persistency);

private:
    // For each component the position of its phase in the phase vector.
    std::vector<int> route_;
};

// The registered simple streams: NV vapor, NL liquid and NS solid phases, each at most one.
template <int NV, int NL, int NS> class StreamSimple : public StreamBaseSimple, public Flash {
public:
    StreamSimple(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                 Persistent* parent, Persistent* root)
        : Model(defaults, id, persistency, parent, root),
          StreamBaseSimple(defaults, id, persistency, parent, root) {
        addSimplePhases(NV, NL, NS, persistency);
    }

protected:
    Flash& flash() override { return *this; }
};

extern template class StreamSimple<0, 1, 0>;
extern template class StreamSimple<0, 0, 1>;
extern template class StreamSimple<1, 0, 0>;
extern template class StreamSimple<0, 1, 1>;
extern template class StreamSimple<1, 1, 1>;

#endif
