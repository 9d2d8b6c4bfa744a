#ifndef TARVO_STREAMS_STREAM_H
#define TARVO_STREAMS_STREAM_H

#include <tarvo/core/EdgeBase.h>
#include <tarvo/phases/EosInterface.h>
#include <tarvo/phases/PhaseGeneric.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Flash.h>

#include <map>
#include <string>
#include <vector>

// A material stream: the edge of a flowsheet that carries a total phase and the phases it splits into.
// A unit sets the total's flows and composition and the two specifications of the flash; the stream's
// calculation finds the state and divides the total among its phases.
//
// The items T and P are the stream's state as the user and the units see it; the flash has T and P of
// its own (FlashBase::T, FlashBase::P), its unknowns, which are copied to the items after a solve as far
// as the specification leaves them free.
class Stream : public EdgeBase, public virtual FlashBase {
public:
    using MassBalanceMode = Tarvo::Utility::MassBalanceMode;
    using PhaseType = Tarvo::Utility::PhaseType;

    Stream(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
           Persistent* root);

    // The calculation of the stream: balance, flash, split among the phases.
    void go(SolutionMode mode, int level) override;
    void calculate(int level) override { go(sequential, level); }
    void setup() override {}
    ObjectiveNleAd* objective() override { return &flash(); }
    // Takes the specifications of mode fm from the items and hands them to the flash.
    virtual void setFlash(const FlashMode& fm);
    // Copies the solved state into the items, as far as the specification leaves it free.
    virtual void updateFlash();
    void initializeNonPersistents() override;
    // A non-ideal stream solves with ideal K values first, and starts the full solve from there.
    virtual void precompute_isIdeal() {}

    // The phases on an equation of state: their density unknowns, residuals and starts.
    void estimateEos(const Value& P, const Value& T) override;
    int calculateResidualsEos(std::vector<Value>& y, uint32_t offset) override;
    std::vector<Value*> densityUnknowns() override;
    bool settleDensities() override;

    Value calculateTotalP(const Value& rho) override;
    Value calculateTotalRho() override;
    Value calculateTotalH() override;
    Value calculateTotalS() override;

    const std::vector<Phase::Mass*>& phases() const override { return phases_; }
    const Value& phaseFraction(const Phase::Mass& phase) const override { return phase.fraction; }
    Phase::Mass* findPhase(const PhaseIndex& index) const override;
    int findPhaseIndex(const PhaseIndex& index) const;
    // The index under which one of the stream's phases is entered; null for the total.
    PhaseIndex phaseIndex(const Phase::Mass& phase) const;
    // The named phase carries everything.
    void setphase(const PhaseIndex& index);
    // Phases of that type, the totals not counted.
    int numberOfPhases(const PhaseType& type) const;
    // Phases beside the total.
    int nphases() const { return static_cast<int>(phases_.size()) - 1; }

    // Multiplies all flows; a factor of one does nothing.
    void scale(const Value& factor);
    Stream& operator*=(const Value& factor);
    Stream& operator/=(const Value& factor);
    // Adds the other's total; the pressure becomes the lower one, the temperature the molar mean.
    Stream& operator+=(const Stream& other);
    void clearComposition();
    // The balance of the total in `mode`, and the split among the phases from the flash's present state,
    // without iterating the flash.
    void calculateX(const MassBalanceMode& mode);
    // The balance of the total in `mode`, with each phase keeping its fraction and composition.
    void calculateXnoFlash(const MassBalanceMode& mode);
    // Heat of vaporization of the total's composition at T.
    Value dhvl(const Value& T) const;

    // What units set on their outlets: the flash and balance modes that the next go uses.
    void setFlashOption(const FlashMode& fm);
    void setFlowOption(const MassBalanceMode& mode);
    // The modes of the options; an empty option means PT, and the total's own balance.
    FlashMode flashOptionMode() const;
    MassBalanceMode flowOptionMode() const;
    // Whether the total has properties (enthalpy, entropy, density), as molar phases with a model have.
    bool hasProperties() const;

    Quantity T{"T", "Temperature", "K", this, 298.15};
    Quantity P{"P", "Pressure", "Pa", this, 101325.0};
    Integer NITER_NLEFlash{"NITER_NLEFlash", "Number of iterations for Flash", 0, this};
    String flowoption{"flowoption", "Feed stream flow configuration", "", this};
    String flashoption{"flashoption", "Feed stream Flash configuration", "", this};

    Phase::Mass* Tphase = nullptr;

protected:
    // The flash half of the concrete stream.
    virtual Flash& flash() = 0;
    const Flash& flash() const { return const_cast<Stream*>(this)->flash(); }
    // Makes (or, from the store, finds) a phase child and enters it under its index.
    Phase::Mass* addPhase(const std::string& type, const std::string& tag, const std::string& description,
                          Persistency* persistency, const PhaseIndex& index);
    // The total phase, first of all phases.
    void addTotalPhase(const std::string& type, Persistency* persistency);
    // A phase whose type, and with it its tag and index, comes from an option: "Vphase", "Lphase" or
    // "Sphase" by the phase's type.
    Phase::Mass* addTypedPhase(const std::string& type, const std::string& description, Persistency* persistency);
    // Enters a phase child under its index.
    Phase::Mass* registerPhase_(Node& node, const PhaseIndex& index);
    // Properties of every phase at the stream's state, and of the total: its enthalpy and entropy only
    // where they are not the specification.
    virtual void calculatePhaseProperties();
    // Whether the flash mode needs the phases' properties in its residuals.
    bool residualsNeedProperties() const;
    // The phases of a total whose balance is worked out, each with its fraction of the total's flow and its
    // composition; with the checks of their fractions.
    void phasesOfTotal_();

    std::vector<Phase::Mass*> phases_;
    // The phases whose model has a density unknown, with that model.
    std::vector<std::pair<Phase::Generic*, Phase::EosInterface*>> eosPhases_;
    std::map<PhaseIndex, int> phasesmap;
    std::vector<int> indexintegers_;
};

// Joins the inlets with flow in the outlet's total: P is the lowest of their pressures, T the flow-weighted
// mean of their temperatures. With no flow at all, 298.15 K and 101325 Pa.
void gather(int level, EdgeBase* outlet, std::vector<EdgeBase*>& inlets, Value& P, Value& T);

#endif
