#ifndef TARVO_UNITS_FLASHDRUMBASE_H
#define TARVO_UNITS_FLASHDRUMBASE_H

#include <tarvo/core/Calculatable.h>
#include <tarvo/core/Model.h>
#include <tarvo/core/ObjectiveNleAdVertex.h>

#include <memory>
#include <vector>

class Reaction;
class ReactionEquilibrium;
class ReactionYield;
class SolverNleRecipesAutomatic;
class Stream;

// A vessel in which the mixed inlet reacts and reaches phase equilibrium under two specifications, named by
// the two letters of `option`. The first fixes the pressure: "P" the pressure P, "D" the drop deltaP, "K" the
// flow coefficient. The second fixes the state: "T" the temperature T, "A" the vapor fraction alfa, "H" the
// duty, "S" the entropy power deltas. The reactions are sub-objects, applied in series or in parallel; those
// at equilibrium add their extents as unknowns to the drum's system, beside those of the flash of the stream
// that the drum calculates. The units put this calculation behind their ports.
class FlashDrumBase : public virtual Model, public ObjectiveNleAdVertex {
public:
    FlashDrumBase(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root);
    ~FlashDrumBase() override;

    // The unknowns: those of the calculated stream's flash, then the extents of the equilibrium reactions.
    void setup_of() override;
    int calculateResidualsLocal() override { return drumResiduals_(); }

    Quantity T{"T", "Temperature", "K", this, 298.15};
    Quantity P{"P", "Pressure", "Pa", this, 101325.0};
    Quantity duty{"duty", "Duty inlet - outlet", "W", this, 0.0};
    Quantity alfa{"alfa", "Molar vapor fraction", "", this, 0.5};
    Quantity deltas{"deltas", "Entropy power", "W/K", this, 0.0};
    Quantity deltaP{"deltaP", "Pressure drop", "Pa", this, 0.0};
    Quantity flowcoefficient{"flowcoefficient", "Flow coefficient", "kg/m7", this, 1000.0};
    Quantity deltaPMax{"deltaPMax", "Maximum allowable pressure drop", "Pa", this, 0.0};
    Quantity beta{"beta", "Fraction of deltaPmax when the pressure drop limitation logic will start acting",
                  "", this, 0.9};
    String option{"option", "Flash configuration option", "PT", this};
    String reactionMode{"reactionMode", "Reaction processing mode", "series", this};
    Integer nReactions{"nReactions", "Number of reactions", 0, this};
    Integer nreactionEquilibriums{"nreactionEquilibriums", "Number of equilibrium reactions", 0, this};
    Integer NITER{"NITER", "Number of iterations", 0, this};
    StringVector embeddedTypeReactions{"embeddedTypeReactions", "type of the embedded reaction", 0, " ",
                                       this};
    std::vector<Reaction*> reactions;

protected:
    // The stream that the drum calculates, or null while the unit has none.
    virtual Stream* calculatedStream_() = 0;
    // Keeps the calculated stream's total, which holds the mixed inlets, as the inlet of the drum.
    void takeInlet_();
    // The calculation of the drum on its inlet, in the solution mode of the unit.
    void go(Calculatable::SolutionMode mode, int level);
    // The reactions, the flash's specification and the stream at the present unknowns; the residuals of the
    // flash, then one of each equilibrium reaction. The drum's own solver evaluates this alone; a unit's
    // calculateResidualsLocal takes its inlets first.
    int drumResiduals_();
    void fillResiduals_() override { drumResiduals_(); }

private:
    // The mixed inlet, kept apart from the stream that the reactions and the flash change.
    struct Inlet {
        std::vector<Value> flows; // on the basis of the calculated stream's total
        Value flow;
        Value mdot;
        Value enthalpyFlow;
        Value entropyFlow;
        Value vdot;
        bool properties = false;
    };

    // The first and the second letter of `option`; another length is the bad-option error.
    char letter_(std::size_t position) const;
    [[noreturn]] void badOption_() const;
    // The calculated stream's pressure and specification; for "H" and "S" its enthalpy or entropy from the
    // inlet's and the duty or entropy power, on the flows that the reactions left.
    void setFlash_();
    // A start for the extents of the equilibrium reactions that have none.
    void estimate_();
    // The calculated stream's flows from the inlet and the reactions; with `report` the messages of the
    // reactions' limits and of the mass balance go to the unit.
    void computeReactionConversions_(bool report);
    void reactInParallel_(bool report);
    // Each equilibrium reaction's temperature, pressure and constants at the calculated stream's state.
    void computeReactionEquilibria_();
    void resetFlows_();
    // Bounds of each equilibrium extent from the inlet: no flow may turn negative.
    void refreshBounds_();
    // The drum's own solve, sequentially, from the calculated stream's own flash at the first extents.
    void solve_(Calculatable::SolutionMode mode, int level);
    // Vapor fraction, temperature, duty and entropy power from the calculated stream, and the checks.
    void finish_();

    Inlet pin_;
    std::vector<ReactionYield*> yields_;
    std::vector<ReactionEquilibrium*> equilibria_;
    std::unique_ptr<SolverNleRecipesAutomatic> solver_;
    bool setUp_ = false;
    // While the solver iterates, the evaluations keep their messages to themselves.
    bool quiet_ = false;
};

#endif
