#ifndef TARVO_UNITS_MULTIEXCHANGER_H
#define TARVO_UNITS_MULTIEXCHANGER_H

#include <tarvo/core/ObjectiveNleAdVertex.h>
#include <tarvo/units/Connectivity.h>
#include <tarvo/units/CoupleReactions.h>
#include <tarvo/units/MultiReaction.h>
#include <tarvo/units/MultiReactionElectrochemical.h>

#include <memory>
#include <vector>

class Reaction;
class SolverNleRecipesAutomatic;

// nStreams couples of streams, inlet i to outlet i, that each exchange heat with a common solid at the
// temperature Ts: couple i gives the solid duty[i] = U[i] A MTD[i] + Qoffset[i], MTD[i] the mean of its
// approaches to Ts at inlet and outlet. Option "UA": the solid loses nothing and Ts is what closes its
// balance; option "Ts": the solid is at TsSet and netDuty is the heat it loses. Reactions act on the
// couples that reactionSides name (0 for the first); multi-stream reactions take their sides from the
// first two couples, as the membranes have them. Material that reactions or transfers take from a stream
// or give to it passes through the solid at Ts, so its enthalpy at Ts enters the solid's balance. An
// electrochemical cell among them runs at Ts and the couples' pressures; the power it delivers leaves the
// solid's balance as electricity, and with an electrical option its current density is an unknown.
class MultiExchanger : public Connectivity, public ObjectiveNleAdVertex {
public:
    MultiExchanger(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                   Persistent* parent, Persistent* root);
    ~MultiExchanger() override;

    ObjectiveNleAd* objective() override { return this; }
    void setup() override;
    void go(SolutionMode mode, int level) override;
    // The unknowns: Ts, the flashes of the outlets, the extents of the equilibrium reactions, the current
    // densities of the cells with an electrical option.
    void setup_of() override;
    // One pass of the unit on its inlets as they stand, as a simultaneous solve of a flowsheet evaluates it.
    int calculateResidualsLocal() override;
    // What the unit takes out of the streams' enthalpy: the heat that the solid loses and the power of its cells.
    Value energyBalance() const override;
    const Value& totalDuty() const { return totDuty; }

    Quantity Ts{"Ts", "Solid temperature", "K", this, 298.15};
    Quantity TsSet{"TsSet", "Solid temperature set value used when option is set to Ts", "K", this, 298.15};
    Quantity A{"A", "Heat transfer area", "m2", this, 10.0};
    Quantity beta{"beta", "Fraction of deltaPmax when the pressure drop limitation logic will start acting", "",
                  this, 0.9};
    Quantity netDuty{"netDuty", "Heat losses", "W", this, 0.0};
    Quantity totDuty{"totDuty", "Sum of heat transfer duties", "W", this, 0.0};
    Quantity apparentDuty{"apparentDuty", "Duty from overall heat balance", "W", this, 0.0};
    Quantity maxT{"maxT", "Maximum allowable temperature at outlet", "K", this, 298.15};
    Quantity minT{"minT", "Minimum allowable temperature at outlet", "K", this, 298.15};
    Integer NITER_Exchanger{"NITER_Exchanger", "Number of iterations", 0, this};
    String option{"option", "Calculation mode", "UA", this};
    String reactionOrder{"reactionOrder", "Order of Reaction conversion computation", "reactionsfirst", this};
    String MTDoption{"MTDoption", "MTD calculation mode", "LMTD", this};
    Integer nStreams{"nStreams", "Number of stream couples connected", 2, this};
    Integer nReactions{"nReactions", "Number of reactions", 0, this};
    Integer nmultiReactions{"nmultiReactions", "Number of multistream reactions", 0, this};
    Integer nreactionEquilibriums{"nreactionEquilibriums", "Number of equilibrium reactions", 0, this};
    std::vector<Quantity> T, P, duty, Qoffset, U, deltaT, deltaP, MTD, inletApproach, outletApproach, hfluxin,
        flowcoefficient, deltaPMax;
    std::vector<String> pressureOption;
    std::vector<Integer> reactionSides;
    StringVector embeddedTypeReactions{"embeddedTypeReactions", "type of the embedded reaction", 0, " ", this};
    StringVector embeddedTypemultiReactions{"embeddedTypemultiReactions", "type of the embedded multireaction", 0,
                                            " ", this};
    std::vector<Reaction*> reactions;
    std::vector<MultiReaction<2>*> multiReactions;

protected:
    void fillResiduals_() override { residuals_(); }

private:
    // All couples connected, with enthalpies, and the reactions bound; reported otherwise.
    bool ready_();
    // Whether the reactions are worked out at each evaluation of the residuals, as their extents are unknowns.
    bool reactingInside_() const;
    // The power that the cells deliver as electricity, in total.
    Value electricalPower_() const;
    // Outlets from inlets and reactions, in the order of reactionOrder; with `report` the mass balances.
    void computeReactionConversions_(bool report);
    // The outlets at the present Ts and outlet states, and the residuals; returns their count.
    int residuals_();
    void solve_(int level);
    void finish_();

    CoupleReactions coupleReactions_;
    std::vector<MultiReactionElectrochemical*> cells_;
    std::unique_ptr<SolverNleRecipesAutomatic> solver_;
    // What the inlets carry per kelvin, W/K, at the present go: a scale of the solid's balance.
    double heatCapacityFlow_ = 0.0;
    bool setUp_ = false;
    bool quiet_ = false;
};

#endif
