#include <tarvo/components/ListComponents.h>
#include <tarvo/streams/StreamTabular.h>

StreamTabular::StreamTabular(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                             Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), StreamTwo<FlashVl>(defaults, id, persistency, parent, root),
      Tabular(defaults, id, persistency, parent, root) {}

void StreamTabular::fillkvl(const Value&, const Value&, bool) {
    for (int i = 0; i < NCOMPONENTS; ++i) kVL_[i] = kVL[i];
}
