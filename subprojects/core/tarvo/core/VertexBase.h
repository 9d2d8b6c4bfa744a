#ifndef TARVO_CORE_VERTEXBASE_H
#define TARVO_CORE_VERTEXBASE_H

#include <tarvo/core/Calculatable.h>
#include <tarvo/core/Model.h>
#include <tarvo/core/Task.h>

#include <boost/bimap.hpp>
#include <boost/bimap/unordered_set_of.hpp>

#include <map>
#include <string>
#include <vector>

class EdgeBase;

// A vertex of a flowsheet: a unit with named ports. Inlet ports begin with "in" and outlet ports with
// "out"; synonyms such as "feed" or "permeate" stand for them. The vertex accumulates what flows in and
// out, so that its mass and energy balances can be checked after every calculation.
class VertexBase : public virtual Model, public Task, public Calculatable {
public:
    enum PortLocation { north = 0, south = 1, east = 2, west = 3 };

    VertexBase(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
               Persistent* parent, Persistent* root);
    // Values are copied through Node's assignment; a whole VertexBase is never assigned.
    VertexBase& operator=(const VertexBase&) = delete;
    VertexBase& operator=(VertexBase&&) = delete;

    // Connects `edge` at `port` (a synonym is translated in place).
    virtual void attach(EdgeBase& edge, std::string& port);
    virtual void detach(std::string port);
    virtual void check() = 0;
    // Compares the accumulated flows with the balances: errors and warnings, never an exception.
    virtual void checkBalance();
    virtual void calculateBalance() = 0;
    virtual Value massBalance() const;
    virtual Value energyBalance() const;
    Tarvo::Utility::Category category() const override { return Tarvo::Utility::Category::unit; }
    // Where a port sits on the drawing: outlets east, all others west.
    virtual PortLocation portLocation(const std::string& port) const;

    const std::string& edgeFromPort(const std::string& port) const;
    const std::string& portFromEdge(const std::string& edge) const;
    PortLocation locationFromEdge(const std::string& edge) const;
    // Replaces a synonym by its port; other names stay as they are.
    void translate(std::string& port) const;
    void registerSynonym(const std::string& synonym, const std::string& port);

    Quantity cmdot{"cmdot", "Cumulative mass flow inlet minus outlet", "kg/s", this};
    Quantity mdotin{"mdotin", "inlet mass flow", "kg/s", this};
    Quantity mdotout{"mdotout", "outlet mass flow", "kg/s", this};
    Quantity cduty{"cduty", "Cumulative enthalpy flow inlet minus outlet", "W", this};
    std::vector<Quantity> mdotcomp;

protected:
    // Connections by edge (full tag) and by port, both ways.
    using Connections = boost::bimap<boost::bimaps::unordered_set_of<std::string>, boost::bimaps::unordered_set_of<std::string>>;
    const Connections& connections() const { return connections_; }

private:
    [[noreturn]] void connectivityError(const std::string& text) const;

    std::map<std::string, std::string> synonyms_;
    Connections connections_; // left: edge full tag, right: port
};

#endif
