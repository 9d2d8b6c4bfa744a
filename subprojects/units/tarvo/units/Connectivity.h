#ifndef TARVO_UNITS_CONNECTIVITY_H
#define TARVO_UNITS_CONNECTIVITY_H

#include <tarvo/core/EdgeBase.h>
#include <tarvo/core/VertexBase.h>

#include <string>
#include <vector>

class Stream;

// A unit that is one vertex of a flowsheet. Its inlets and outlets are two numbered lists: port "in3" is
// slot 2 of the inlets, "in" takes the next free number, "out1" is slot 0 of the outlets. The unit sets
// how many of each may be connected and which inlets are required; check() tells what is missing, and
// calculateBalance() adds up what flows in and out. Every unit operation of a flowsheet derives from it.
class Connectivity : public virtual VertexBase {
public:
    Connectivity(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                 Persistent* parent, Persistent* root);

    // `port` is rewritten to the numbered name where it was given without a number ("in" -> "in2").
    void attach(EdgeBase& edge, std::string& port) override;
    void detach(std::string port) override;
    // Structural faults raise ErrorConnectivity; dangling edges are errors and other anomalies warnings.
    void check() override;
    void calculateBalance() override;

    // A plain unit calculates once, sequentially, and has nothing to set up or rebuild.
    void calculate(int level) override { go(sequential, level); }
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }

    // 0-based index of an inlet that must be connected.
    void inletRequired(unsigned int index);
    // 0-based access to connected edges; the tests raise nothing.
    EdgeBase& inlet(unsigned int index) const;
    EdgeBase& outlet(unsigned int index) const;
    bool hasInlet(unsigned int index) const;
    bool hasOutlet(unsigned int index) const;
    // The edge on a numbered port.
    EdgeBase& edgeFromPort(const std::string& port) const;
    // "in<i>" and "out<i>", 1-based.
    std::string portInlet(int i) const;
    std::string portOutlet(int i) const;
    void printConnectivity() const;
    // Whether an edge has ever been attached; a unit that stands alone may then attach its own streams.
    bool attached() const { return attached_; }
    // Forgets every connection, before the stored streams of a retrieved flowsheet attach again: the counts
    // come back from the store, the edges do not.
    void clearConnections();

    Integer nIn{"nIn", "Number of connected inlet EdgeBases", 0, this};
    Integer nOut{"nOut", "Number of connected outlet EdgeBases", 0, this};
    Integer maxNIn{"maxNIn", "Maximum number of connected inlet EdgeBases or -1 for unlimited", -1, this};
    Integer maxNOut{"maxNOut", "Maximum number of connected outlet EdgeBases or -1 for unlimited", -1, this};
    String constraints{"constraints", "Used internally to persist connectivity constraints", "", this};

protected:
    // The connected edges as streams, slot by slot (null for a free port), made once before the first
    // calculation; false when they have been made before.
    bool collectStreams_();
    // Collects the streams; false, with the error "no inlet connected, nothing to do", when the first inlet
    // is free.
    bool firstInletConnected_();
    // Inlet i and outlet i of each of the n couples of streams connected, and with enthalpies; otherwise
    // the error of what is missing and false.
    bool couplesConnected_(std::size_t n);
    // Raises the error of a solution mode outside 0 to 3.
    void requireKnownMode_(SolutionMode mode) const;

    std::vector<EdgeBase*> inlets_;
    std::vector<EdgeBase*> outlets_;
    std::vector<Stream*> inletstreams_;
    std::vector<Stream*> outletstreams_;

private:
    // One side of the unit: the inlets or the outlets.
    struct Side {
        std::vector<EdgeBase*>& edges;
        Integer& count;
        const Integer& limit;
        bool& indexed;
        const char* prefix;
    };
    Side inletSide_();
    Side outletSide_();
    void attachTo_(Side side, EdgeBase& edge, std::string& port);
    void detachFrom_(Side side, const std::string& port);
    [[noreturn]] void impossible_(const std::string& port) const;
    [[noreturn]] void fault_(const std::string& text) const;

    bool attached_ = false;
    bool indexedInlet_ = false;
    bool indexedOutlet_ = false;
    bool streamsCollected_ = false;
};

// The 0-based index of the 1-based port number in `text`; `tag` names the unit in the error.
unsigned int parse_int(const std::string& text, const std::string& tag);

#endif
