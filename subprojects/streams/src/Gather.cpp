#include <tarvo/streams/Stream.h>
#include <tarvo/utility/Log.h>

#include <cassert>

namespace {
constexpr int verbosityFile = -1;
} // namespace

void gather(int level, EdgeBase* outlet, std::vector<EdgeBase*>& inlets, Value& P, Value& T) {
    auto* out = my_cast<Stream*>(outlet, "gather");
    TARVO_LOG_AT(verbosityFile + level, 3) << "Gathering " << out->fullTag();
    T.clear();
    out->Tphase->totalFlow().clear();
    Value flowTemperature = 0.0 * out->Tphase->totalFlow() * out->T;
    bool first = true;
    const Stream* only = nullptr; // the one inlet with flow, if there is just one
    int flowing = 0;
    for (EdgeBase* edge : inlets) {
        auto* in = my_cast<Stream*>(edge, "gather");
        if (!(in->Tphase->totalFlow().toDouble() > 0.0)) continue;
        assert(out->Tphase->representation() == in->Tphase->representation());
        if (first) {
            *out->Tphase = *in->Tphase;
            P = in->P;
            first = false;
        } else {
            *out->Tphase += *in->Tphase;
            if (in->P < P) P = in->P;
        }
        flowTemperature += in->Tphase->totalFlow() * in->T;
        only = in;
        ++flowing;
        TARVO_LOG_AT(verbosityFile + level, 3) << "Gathering " << in->fullTag() << " with P = " << in->P.toDouble()
                                               << " T = " << in->T.toDouble()
                                               << " ndot = " << in->Tphase->totalFlow().toDouble();
    }
    const Value& flow = out->Tphase->totalFlow();
    if (flow.toDouble() == 0.0) {
        T = Value(298.15, "K");
        P = Value(101325.0, "Pa");
    } else if (flowing == 1) {
        // The inlet's own temperature: the weighted mean of one would carry the derivatives of its flow too,
        // zeros that a chain of units would pile up from unit to unit.
        T = only->T;
    } else {
        T = flowTemperature / flow;
    }
}
