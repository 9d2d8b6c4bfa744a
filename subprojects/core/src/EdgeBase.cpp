#include <tarvo/core/EdgeBase.h>

EdgeBase::EdgeBase(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                   Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root) {
    for (String* s : {&fromTAG, &toTAG, &fromPort, &toPort, &cutsource, &cutdest}) addVariable(*s);
    // The ends are needed while the stream is built, before the factory restores its values.
    if (persistency) restoreParameters(persistency);
}
