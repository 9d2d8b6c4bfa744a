#ifndef TARVO_STREAMS_FLASH_H
#define TARVO_STREAMS_FLASH_H

#include <tarvo/core/ObjectiveNleAd.h>
#include <tarvo/core/Scaler.h>
#include <tarvo/core/SolverNleRecipesAutomatic.h>
#include <tarvo/streams/FlashBase.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

class FlashVl;

// The flash as a system of equations: temperature and pressure, and in derived classes the split between
// phases, are unknowns of an objective solved by Newton's method. One fluid phase here: no equilibrium,
// the residuals are the specification and the pressure.
class Flash : public ObjectiveNleAd, public virtual FlashBase, public virtual Diagnostic {
public:
    explicit Flash(std::string name = "single phase Flash objective function");
    // A flash belongs to one stream; its unknowns are shared with the solver by address.
    Flash& operator=(const Flash&) = delete;
    Flash& operator=(Flash&&) = delete;

    int calculateResiduals(std::vector<Value>& y, uint32_t offset) override;
    // Stores the mode and its two specifications; a mode that the class does not solve raises the
    // "Flash mode" error.
    virtual void setFlash_(const FlashMode& fm, const Value& a, const Value& b, bool apply);
    // Solves, unless the flash is part of a larger system (simultaneous): a start found by bracketing
    // searches, then Newton's method to the tolerance. Returns the solver's status, or one of the two below
    // where the specification has no state in the range of temperatures or pressures.
    virtual int solveFlash(bool simultaneous, bool zeroFlow);
    virtual std::string statusText(int status) const;
    // The state at (P, T), in equilibrium, in the phases: a point of the start's searches.
    virtual void settle(const Value& P, const Value& T);
    // The flash as one between two fluid phases, or null: a virtual call, where a cast costs more than
    // a flash of a simple stream.
    virtual FlashVl* twoPhase() { return nullptr; }
    // Registers the unknowns once: T, P, then those of derived classes.
    virtual void addUnknowns();
    virtual bool isSolved() const { return solved_; }
    virtual void prepare_Flash_residuals() {}
    // The specification of the mode. Enthalpy and entropy are measured in R T0 and R, which hold no
    // enthalpy of formation, so that the temperature comes out alike for every species.
    virtual Value calculateResidualsFlashMode();
    // The start of the iteration at (P, T), both taken from the specification where it gives them.
    virtual void estimate(const Value& P, const Value& T);
    const Value& Fraction(const PhaseIndex& index, bool clipped) const override;
    Vector X(const PhaseIndex& index) const override;
    virtual void estimateEquilibrium(const Value& /*P*/, const Value& /*T*/) {}

    // The pressure as specified, or as a density specification makes it; with entropy and vapor fraction
    // given, the entropy.
    Value calculateResidualsPressure();
    // Separates the components that are solids from the fluid ones in the composition z: fluidZ_ and
    // solidX_ are each normalized (0 where a part has nothing), solidShare_ is the solids' molar share.
    void calculateInertSolids(const Vector& z);
    int iterations() const { return solver_ ? solver_->iterations() : 0; }
    // Registers the unknowns if that has not happened; the objective of an enclosing system reads them.
    void ensureUnknowns();

    bool isIdeal = true;

    // The largest residual of a converged flash.
    static constexpr double tolerance = 1e-10;
    // Statuses of a specification with no state in the range.
    static constexpr int temperatureOutside = 10;
    static constexpr int pressureOutside = 11;
    // Whether v lies in [lo, hi], the ends included; NaN does not.
    static bool inRange(const Value& v, const Value& lo, const Value& hi);
    // 0 for a state within the range, else the status that names the first variable outside it.
    static int rangeStatus(const Value& P, const Value& T);

protected:
    // Unknowns that a derived class hands over behind T and P, with their scalers.
    virtual std::vector<std::pair<Value*, Scaler>> betas() { return {}; }
    [[noreturn]] void unsupportedMode(const std::string& function, const FlashMode& fm) const;

    Vector fluidZ_;
    Vector solidX_;
    Value solidShare_{0.0};

private:
    std::unique_ptr<SolverNleRecipesAutomatic> solver_;
    bool unknownsAdded_ = false;
    bool solved_ = false;
};

#endif
