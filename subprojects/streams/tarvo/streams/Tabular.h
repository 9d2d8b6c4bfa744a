#ifndef TARVO_STREAMS_TABULAR_H
#define TARVO_STREAMS_TABULAR_H

#include <tarvo/core/Model.h>

#include <vector>

// Component volatilities that the user enters as data, one per component: the K values of a stream
// whose equilibrium is known from measurement rather than from a model.
class Tabular : public virtual Model {
public:
    Tabular(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
            Persistent* root);
    // The items are copied through Node's assignment; a whole Tabular is never assigned.
    Tabular& operator=(const Tabular&) = delete;
    Tabular& operator=(Tabular&&) = delete;

    std::vector<Quantity> kVL;
};

#endif
