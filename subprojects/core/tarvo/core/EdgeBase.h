#ifndef TARVO_CORE_EDGEBASE_H
#define TARVO_CORE_EDGEBASE_H

#include <tarvo/core/Calculatable.h>
#include <tarvo/core/Model.h>
#include <tarvo/core/Precedence.h>

// An edge of a flowsheet: a stream. It remembers the tags and ports of both of its ends as stored
// strings, from which a retrieved flowsheet rebuilds its connections. An edge with a cut source is a cut:
// its values are unknowns of the flowsheet's convergence.
class EdgeBase : public virtual Model, public Precedence, public Calculatable {
public:
    EdgeBase(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
             Persistent* root);
    // Values are copied through Node's assignment; a whole EdgeBase is never assigned.
    EdgeBase& operator=(const EdgeBase&) = delete;
    EdgeBase& operator=(EdgeBase&&) = delete;

    Tarvo::Utility::Category category() const override { return Tarvo::Utility::Category::stream; }
    virtual int number() const { return 2; }
    // How drawings show the edge.
    virtual const char* colour() const { return "blue"; }
    virtual double lineWidth() const { return 2.0; }
    bool isCut() const { return !cutsource.value().empty(); }

    String fromTAG{"fromTAG", "Tag of source Vertex", "", this};
    String toTAG{"toTAG", "Tag of destination Vertex", "", this};
    String fromPort{"fromPort", "Tag of port description for source", "", this};
    String toPort{"toPort", "Tag of port description for destination", "", this};
    String cutsource{"cutsource", "TAG of source of cut stream", "", this};
    String cutdest{"cutdest", "TAG of dest of cut stream", "", this};
};

#endif
