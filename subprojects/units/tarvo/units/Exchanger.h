#ifndef TARVO_UNITS_EXCHANGER_H
#define TARVO_UNITS_EXCHANGER_H

#include <tarvo/core/ObjectiveNleAdVertex.h>
#include <tarvo/units/Connectivity.h>
#include <tarvo/units/CoupleReactions.h>

#include <memory>
#include <vector>

class Reaction;
class SolverNleRecipesAutomatic;

// A heat exchanger between two streams: the hot side enters at port 1 ("hotin", couple 1) and leaves at
// "hotout", the cold side enters at port 2 ("coldin") and leaves at "coldout". Its one unknown is the hot
// side's duty dutyhot, fixed by `option`: "UA" the transfer equation dutyhot = U Ft A MTD with A given,
// "Thot" or "Tcold" that side's outlet temperature; the cold side receives eta times dutyhot, the rest is
// lost. MTD is the mean of the two approaches by MTDoption (calculateAverage), the approaches set by the
// flow directions of the sides. Reactions may act on either side, reactionSides[i] 0 for the hot and 1
// for the cold side; those at equilibrium add their extents to the unknowns.
class Exchanger : public Connectivity, public ObjectiveNleAdVertex {
public:
    Exchanger(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
              Persistent* parent, Persistent* root);
    ~Exchanger() override;

    void go(SolutionMode mode, int level) override;
    ObjectiveNleAd* objective() override { return this; }
    // The unknowns: dutyhot, the flashes of the hot and of the cold outlet, the extents of the equilibrium
    // reactions.
    void setup_of() override;
    // One pass of the unit on its inlets as they stand, as a simultaneous solve of a flowsheet evaluates it.
    int calculateResidualsLocal() override;
    // What the unit loses to the environment.
    Value energyBalance() const override { return heat_losses; }
    // The approaches by the flow directions; with `report` an approach not above 0 is reported, kept as
    // its absolute value and marks its side, whose outlet then starts the next calculation from its inlet.
    void calculateApproaches(bool report, const Value& coldOutT, const Value& hotOutT);

    Quantity coldT{"coldT", "Temperature of cold outlet stream", "K", this, 298.15};
    Quantity coldP{"coldP", "Pressure of cold outlet stream", "Pa", this, 101325.0};
    Quantity hotT{"hotT", "Temperature of hot outlet stream", "K", this, 298.15};
    Quantity hotP{"hotP", "Pressure of hot outlet stream", "Pa", this, 101325.0};
    Quantity dutyhot{"dutyhot", "Hot side duty absolute value", "W", this, 0.0};
    Quantity dutycold{"dutycold", "Cold side duty absolute value", "W", this, 0.0};
    Quantity heat_losses{"heat_losses", "Heat losses to environment dutyhot minus dutycold", "W", this, 0.0};
    Quantity eta{"eta", "Heat transfer efficiency dutycold divided by dutyhot", "", this, 1.0};
    Quantity U{"U", "Overall heat transfer coefficient in terms of dutyhot", "W/(m2*K)", this, 100.0};
    Quantity Ft{"Ft", "MTD correction factor", "", this, 1.0};
    Quantity A{"A", "Heat transfer area", "m2", this, 10.0};
    Quantity deltaTcold{"deltaTcold", "Temperature difference for cold stream", "K", this, 0.0};
    Quantity deltaThot{"deltaThot", "Temperature difference for hot stream", "K", this, 0.0};
    Quantity deltaPhot{"deltaPhot", "Pressure difference for hot stream", "Pa", this, 0.0};
    Quantity deltaPcold{"deltaPcold", "Pressure difference for cold stream", "Pa", this, 0.0};
    Quantity MTD{"MTD", "Mean temperature difference", "K", this, 0.0};
    Quantity deltaTcoldApproach{"deltaTcoldApproach", "Temperature approach for cold stream", "K", this, 0.0};
    Quantity deltaThotApproach{"deltaThotApproach", "Temperature approach for hot stream", "K", this, 0.0};
    Quantity coldhfluxin{"coldhfluxin", "Heat flux cold side inlet", "W", this, 0.0};
    Quantity hothfluxin{"hothfluxin", "Heat flux hot side inlet", "W", this, 0.0};
    Quantity coldflowcoefficient{"coldflowcoefficient", "Flow coefficient cold side", "kg/m7", this, 1000.0};
    Quantity hotflowcoefficient{"hotflowcoefficient", "Flow coefficient hot side", "kg/m7", this, 1000.0};
    Quantity deltaPcoldMax{"deltaPcoldMax", "maximum allowable pressure drop, cold side", "Pa", this, 0.0};
    Quantity deltaPhotMax{"deltaPhotMax", "maximum allowable pressure drop, hot side", "Pa", this, 0.0};
    Quantity beta{"beta", "Fraction of deltaPmax when the pressure drop limitation logic will start acting", "",
                  this, 0.9};
    Quantity maxduty{"maxduty", "Maximum allowable duty", "kW", this, 100.0};
    String option{"option", "Calculation mode", "UA", this};
    String hotoption{"hotoption", "Pressure computation option, hot side", "D", this};
    String coldoption{"coldoption", "Pressure computation option, cold side", "D", this};
    String hotflowoption{"hotflowoption", "Flow Direction option hot side", "backward", this};
    String coldflowoption{"coldflowoption", "Flow Direction option cold side", "forward", this};
    String MTDoption{"MTDoption", "MTD calculation mode", "LMTD", this};
    Integer NITER_Exchanger{"NITER_Exchanger", "Number of iterations", 0, this};
    Integer nReactions{"nReactions", "Number of reactions", 0, this};
    Integer nreactionEquilibriums{"nreactionEquilibriums", "Number of equilibrium reactions", 0, this};
    std::vector<Integer> reactionSides;
    StringVector embeddedTypeReactions{"embeddedTypeReactions", "type of the embedded reaction", 0, " ", this};
    std::vector<Reaction*> reactions;

protected:
    void fillResiduals_() override { residuals_(); }

private:
    Stream& hotIn_() const { return *inletstreams_[0]; }
    Stream& coldIn_() const { return *inletstreams_[1]; }
    Stream& hotOut_() const { return *outletstreams_[0]; }
    Stream& coldOut_() const { return *outletstreams_[1]; }
    // Both sides connected and their reactions bound; reported otherwise.
    bool ready_();
    void pressures_();
    // The largest duty that either side can take: each outlet at the other side's inlet temperature.
    void dutyBounds_(int level);
    // Start temperatures of the outlets by `option`.
    void startTemperatures_();
    void startDuty_(int level);
    // The outlets' flows from the inlets' and the reactions.
    void react_(bool report);
    // The unit's own solve from dutyhot at 0.9 maxduty, and the report of its result.
    void solve_(int level);
    // The reactions, the outlets at the present dutyhot and the equation of `option`; returns the count.
    int residuals_();
    Scaler dutyScaler_(const Tarvo::Utility::ScalingMode& mode) const;
    void finish_();

    CoupleReactions sideReactions_;
    std::unique_ptr<SolverNleRecipesAutomatic> solver_;
    bool setUp_ = false;
    bool coldApproachNegative_ = false;
    bool hotApproachNegative_ = false;
    // While the solver iterates, the evaluations keep their messages to themselves.
    bool quiet_ = false;
};

#endif
