#ifndef TARVO_UNITS_COUPLEREACTIONS_H
#define TARVO_UNITS_COUPLEREACTIONS_H

#include <tarvo/persistency/Defaults.h>
#include <tarvo/persistency/Integer.h>
#include <tarvo/value/Value.h>

#include <string>
#include <vector>

class Model;
class Reaction;
class ReactionEquilibrium;
class ReactionYield;
class Stream;

// The reactions of a unit through which streams pass in couples, inlet i to outlet i, as the sides of an
// exchanger. Each reaction acts on the outlet of the couple that its entry in reactionSides names, 0 for
// the first couple: the outlet's flows are those of its inlet, then the reactions of that couple in turn,
// each on what the one before left. Those at equilibrium hand their extents to the unit as unknowns and add
// one equation each at the state of their outlet.
class CoupleReactions {
public:
    // Binds each reaction to the total of the outlet of its couple. False, with `unsetText` reported on
    // `unit`, when a reaction names no couple of the unit; nothing is bound then.
    bool bind(Model& unit, const std::vector<Reaction*>& reactions, const std::vector<Integer>& sides,
              const std::vector<Stream*>& outlets, const std::string& unsetText);
    // Every outlet's flows are those of its inlet again.
    static void reset(const std::vector<Stream*>& inlets, const std::vector<Stream*>& outlets);
    // The reactions, each on the flows of its outlet as they stand. With `report`, a couple whose mass the
    // reactions change is reported on `unit` as "unbalanced reactions, side " and the couple's number,
    // counted from 1 as the ports are.
    void react(Model& unit, const std::vector<Stream*>& outlets, bool report) const;
    // Each equilibrium reaction without an extent takes a small one, from its key's flow in its outlet.
    void estimate(const std::vector<Stream*>& inlets, const std::vector<Stream*>& outlets) const;
    // One residual per equilibrium reaction, from residuals[offset] on, at the state of its outlet.
    int equilibriumResiduals(std::vector<Value>& residuals, unsigned offset) const;

    const std::vector<ReactionEquilibrium*>& equilibria() const { return equilibria_; }
    bool empty() const { return yields_.empty(); }

private:
    struct Bound {
        ReactionYield* reaction;
        std::size_t couple;
    };
    std::vector<Bound> yields_;
    std::vector<ReactionEquilibrium*> equilibria_;
    std::vector<Stream*> equilibriumOutlets_;
};

// After its flows changed: the outlet balances on its flows alone, and its composition follows them.
void settleFlows(Stream& out);

// The couple of the reaction at `index`, read from the string of integers that a unit's Defaults may hold
// ("reactionSides[i]"); -1, unset, where it holds none.
int reactionSideDefault(const Tarvo::Persistency::Defaults& defaults, int index);

#endif
