#ifndef TARVO_STREAMS_STREAMTABULAR_H
#define TARVO_STREAMS_STREAMTABULAR_H

#include <tarvo/streams/StreamTwo.h>
#include <tarvo/streams/Tabular.h>

// Two fluid phases whose K values are the volatilities of Tabular, independent of T, P and composition:
// the split is the Rachford-Rice solution for them. The phases' models give the properties only.
class StreamTabular : public StreamTwo<FlashVl>, public Tabular {
public:
    StreamTabular(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root);

    void fillkvl(const Value& P, const Value& T, bool estimating) override;
};

#endif
