#include <tarvo/core/SolverNleRecipesAutomatic.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/CalculateAverage.h>
#include <tarvo/units/Exchanger.h>
#include <tarvo/units/PressureDrop.h>
#include <tarvo/units/Reaction.h>
#include <tarvo/units/ReactionEquilibrium.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <algorithm>
#include <cassert>
#include <climits>
#include <tuple>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::FlashMode;
using Tarvo::Utility::MassBalanceMode;
using Tarvo::Utility::ScalingMode;

namespace {
constexpr int verbosityFile = -1;
// Outlet temperatures are kept this far inside the inlets' range, so that no approach closes.
const Value margin(0.1, "K");
// The unit's solve ends on residuals below this: the transfer equation in m2, the flashes in their own
// measure.
constexpr double tolerance = 1e-10;
// Halvings of the first duty: 2^-30 of maxduty is below any duty worth calculating.
constexpr int maxHalvings = 30;

enum class Direction { forward, backward, mixed };

Direction direction(const std::string& text, const std::string& item, const Model& unit) {
    if (text == "forward") return Direction::forward;
    if (text == "backward") return Direction::backward;
    if (text == "mixed") return Direction::mixed;
    throw ErrorBrowsing::unsupportedOption("Exchanger::calculateApproaches", text, item, unit.fullTag(),
                                           unit.type());
}
} // namespace

Exchanger::Exchanger(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                     Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root), ObjectiveNleAdVertex("Exchanger") {
    for (Quantity* q : {&coldT, &coldP, &hotT, &hotP, &dutyhot, &dutycold, &heat_losses, &eta, &U, &Ft, &A,
                        &deltaTcold, &deltaThot, &deltaPhot, &deltaPcold, &MTD, &deltaTcoldApproach,
                        &deltaThotApproach, &coldhfluxin, &hothfluxin, &coldflowcoefficient,
                        &hotflowcoefficient, &deltaPcoldMax, &deltaPhotMax, &beta, &maxduty})
        addVariable(*q);
    for (Quantity* q : {&coldP, &hotP, &dutyhot, &dutycold, &heat_losses, &deltaTcold, &deltaThot, &MTD,
                        &deltaTcoldApproach, &deltaThotApproach, &coldhfluxin, &hothfluxin, &deltaPcoldMax,
                        &deltaPhotMax, &maxduty})
        q->setOutput();
    option = retrieveString(defaults, id, persistency, "option", "UA");
    for (String* s : {&option, &hotoption, &coldoption, &hotflowoption, &coldflowoption, &MTDoption})
        addVariable(*s);
    nReactions = retrieveInteger(defaults, id, persistency, "nReactions", -1, INT_MAX, 0);
    for (Integer* i : {&NITER_Exchanger, &nReactions, &nreactionEquilibriums})
        addVariable(*i);
    const int n = nReactions.value();
    addVariables(reactionSides, n, "reactionSides", "heat exchange side the reactions are taking place", -1);
    addVariable(embeddedTypeReactions);
    embeddedTypeReactions.resize(n);
    for (int i = 0; i < n; ++i) {
        reactionSides[i] = reactionSideDefault(defaults, i);
        const std::string type = "embeddedTypeReactions[" + std::to_string(i) + "]";
        embeddedTypeReactions[i] = defaults.hasString(type) ? defaults.getString(type) : " ";
    }
    addSubObjects(verbosityInstance(), defaults, persistency, n, "reactions", "embedded Reaction",
                  "embeddedTypeReactions", "Reaction", reactions);
    registerSynonym("hotin", "in1");
    registerSynonym("hotout", "out1");
    registerSynonym("coldin", "in2");
    registerSynonym("coldout", "out2");
    maxNIn = 2;
    maxNOut = 2;
    inletRequired(0);
    inletRequired(1);
}

Exchanger::~Exchanger() = default;

bool Exchanger::ready_() {
    if (!couplesConnected_(2)) return false;
    return sideReactions_.bind(*this, reactions, reactionSides, outletstreams_, "reactionSide not set");
}

void Exchanger::setup_of() {
    if (setUp_) return;
    if (!ready_()) return;
    setUp_ = true;
    addUnknown(&dutyhot, dutyScaler_(ScalingMode::linear), "dutyhot");
    addObjectiveFunction(flashOf(hotOut_()));
    addObjectiveFunction(flashOf(coldOut_()));
    const auto& equilibria = sideReactions_.equilibria();
    for (std::size_t i = 0; i < equilibria.size(); ++i)
        addUnknown(&equilibria[i]->conv, Scaler(ScalingMode::linear, -1.0, 1.0, 1.0, 10.0),
                   "reaction[" + std::to_string(i) + "].conv");
    nreactionEquilibriums = static_cast<int>(equilibria.size());
    solver_ = std::make_unique<SolverNleRecipesAutomatic>(static_cast<int>(size()), this);
    solver_->setTolerances(0, 0, tolerance, 0);
}

void Exchanger::calculateApproaches(bool report, const Value& coldOutT, const Value& hotOutT) {
    const Direction hot = direction(hotflowoption.value(), "hotflowoption", *this);
    const Direction cold = direction(coldflowoption.value(), "coldflowoption", *this);
    const Value& hotInT = hotIn_().T;
    const Value& coldInT = coldIn_().T;
    if (hot != Direction::mixed && cold != Direction::mixed) {
        if (hot != cold) { // counter-current
            deltaTcoldApproach = hotInT - coldOutT;
            deltaThotApproach = hotOutT - coldInT;
        } else {
            deltaTcoldApproach = hotOutT - coldOutT;
            deltaThotApproach = hotInT - coldInT;
        }
    } else if (cold == Direction::mixed && hot != Direction::mixed) {
        deltaTcoldApproach = hotOutT - coldOutT;
        deltaThotApproach = hotInT - coldOutT;
    } else {
        deltaTcoldApproach = hotOutT - coldOutT;
        deltaThotApproach = hotOutT - coldOutT;
    }
    if (!report) return;
    for (auto [approach, negative, text] :
         {std::tuple{&deltaTcoldApproach, &coldApproachNegative_, "negative deltaTcoldApproach"},
          std::tuple{&deltaThotApproach, &hotApproachNegative_, "negative deltaThotApproach"}}) {
        *negative = approach->toDouble() <= 0.0;
        if (!*negative) continue;
        reportWarning(text);
        *approach = fabs(*approach);
    }
}

void Exchanger::pressures_() {
    deltaPhotMax = hotIn_().P;
    deltaPcoldMax = coldIn_().P;
    pressureDrop(this, coldoption.value(), deltaPcold, deltaPcoldMax, beta, coldIn_().P, coldP,
                 coldflowcoefficient, volumeFlow(coldIn_()), "Exchanger::go");
    pressureDrop(this, hotoption.value(), deltaPhot, deltaPhotMax, beta, hotIn_().P, hotP, hotflowcoefficient,
                 volumeFlow(hotIn_()), "Exchanger::go");
}

void Exchanger::dutyBounds_(int level) {
    coldhfluxin = totalEnthalpyFlow(coldIn_());
    coldOut_().P = coldP;
    coldOut_().T = hotIn_().T;
    refreshOutlet(coldOut_(), FlashMode::PT, sequential, level + 1);
    const Value maxdutycold = totalEnthalpyFlow(coldOut_()) - coldhfluxin;
    if (maxdutycold.toDouble() < 0.0) reportWarning("unphysical cold side duty estimate");
    hothfluxin = totalEnthalpyFlow(hotIn_());
    hotOut_().P = hotP;
    hotOut_().T = coldIn_().T;
    refreshOutlet(hotOut_(), FlashMode::PT, sequential, level + 1);
    const Value maxdutyhot = hothfluxin - totalEnthalpyFlow(hotOut_());
    if (maxdutyhot.toDouble() < 0.0) reportWarning("unphysical hot side duty estimate");
    maxduty = maxdutycold < maxdutyhot ? maxdutycold : maxdutyhot;
}

void Exchanger::startTemperatures_() {
    const Value& hotInT = hotIn_().T;
    const Value& coldInT = coldIn_().T;
    const Value hotEstimate = (coldInT + 9.0 * hotInT) / 10.0;
    const Value coldEstimate = (9.0 * coldInT + hotInT) / 10.0;
    const auto outside = [&](const Stream& s) { return s.T > hotInT || s.T < coldInT; };
    const std::string& mode = option.value();
    const bool fresh = pristine();
    if (mode == "UA") {
        hotOut_().T = fresh ? hotEstimate : Value(hotT);
        coldOut_().T = fresh ? coldEstimate : Value(coldT);
        if (outside(hotOut_())) hotOut_().T = hotEstimate;
        if (outside(coldOut_())) coldOut_().T = coldEstimate;
    } else if (mode == "Thot") {
        if (hotT < coldInT + margin) {
            reportError("Specified hot side outlet temperature is lower than minimum allowable temperature to avoid "
                        "temperature crossing; hot side temperature will be set to the minimum allowable value");
            hotT = coldInT + margin;
        }
        hotOut_().T = hotT;
        if (fresh || outside(coldOut_())) coldOut_().T = coldEstimate;
    } else if (mode == "Tcold") {
        if (coldT > hotInT - margin) {
            reportError("Specified cold side outlet temperature is higher than maximum allowable temperature to "
                        "avoid temperature crossing; cold side temperature will be set to the maximum allowable "
                        "value");
            coldT = hotInT - margin;
        }
        coldOut_().T = coldT;
        if (fresh || outside(hotOut_())) hotOut_().T = hotEstimate;
    } else {
        throw ErrorBrowsing::unsupportedOption(TARVO_FUNCTION, mode, "Calculation mode", fullTag(), type());
    }
}

void Exchanger::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    assert(nreactionEquilibriums.value() >= 0);
    assert(nReactions.value() >= 0);
    setup_of();
    if (!setUp_) return; // reported
    TARVO_LOG(3) << "Now copying streams";
    for (int side = 0; side < 2; ++side)
        *outletstreams_[side]->Tphase = *inletstreams_[side]->Tphase;
    TARVO_LOG(3) << "Finished copying streams";
    const Value& hotInT = hotIn_().T;
    const Value& coldInT = coldIn_().T;
    if (hotInT == coldInT) {
        reportWarning("Exchanger: hot cold isothermal, bypassing block");
        countCalculation();
        return;
    }
    if (hotInT < coldInT) reportWarning("Exchanger: potential hot/cold swap");
    if (!pristine() && mode < simultaneous) {
        if (coldApproachNegative_) {
            TARVO_LOG(3) << "Resetting cold side outlet T";
            coldOut_().T = coldInT;
        }
        if (hotApproachNegative_) {
            TARVO_LOG(3) << "Resetting hot side outlet T";
            hotOut_().T = hotInT;
        }
    }
    if (pristine() && mode == sequential) sideReactions_.estimate(inletstreams_, outletstreams_);
    // Reactions with given extents change the flows once here; those at equilibrium at every evaluation.
    if (sideReactions_.equilibria().empty()) react_(true);
    pressures_();
    if (mode >= simultaneous)
        residuals_();
    else
        solve_(level);
    finish_();
    calculateBalance();
    countCalculation();
    TARVO_LOG(3) << "Done";
}

void Exchanger::solve_(int level) {
    dutyBounds_(level);
    startTemperatures_();
    const double bound = maxduty.toDouble();
    if (bound == 0.0) { // an empty side: nothing can pass
        reportWarning("Exchanger: no duty possible, bypassing block");
        dutyhot.clear();
        residuals_();
        for (Stream* out : outletstreams_)
            out->go(sequential, level + 1);
        return;
    }
    startDuty_(level);
    setScaler(0, dutyScaler_(ScalingMode::arctangentExclusive));
    quiet_ = true;
    init(solver_->x());
    const int status = solver_->solve();
    quiet_ = false;
    residuals_(); // the state at the solution, with its messages
    NITER_Exchanger = solver_->iterations();
    if (status < 0) reportWarning(solver_->statusText(status));
    if (status > 0) reportError(solver_->statusText(status));
    if (status != 0 && solver_->failed()) reportError("MTD convergence failure;");
}

// The outlets' own flashes at the first duty start the unit's solve from a state of its outlets. The first
// duty is 0.9 maxduty; where the outlets would cross there, so that the approaches differ in sign and the
// mean has no value to steer by, it is halved until they do not.
void Exchanger::startDuty_(int level) {
    if (!sideReactions_.equilibria().empty()) react_(false);
    hothfluxin = totalEnthalpyFlow(hotIn_());
    coldhfluxin = totalEnthalpyFlow(coldIn_());
    hotOut_().P = hotP;
    coldOut_().P = coldP;
    Value duty = 0.9 * maxduty;
    for (int halving = 0; halving < maxHalvings; ++halving, duty = duty / 2.0) {
        setEnthalpyFlow(hotOut_(), hothfluxin - duty);
        setEnthalpyFlow(coldOut_(), coldhfluxin + eta * duty);
        for (Stream* out : outletstreams_)
            out->go(sequential, level + 1);
        calculateApproaches(false, coldOut_().T, hotOut_().T);
        if (deltaTcoldApproach.toDouble() * deltaThotApproach.toDouble() > 0.0) break;
    }
    dutyhot = duty;
}

// A hot side colder than the cold one exchanges a negative duty: the bounds follow the sign of maxduty.
Scaler Exchanger::dutyScaler_(const ScalingMode& mode) const {
    const double bound = maxduty.toDouble();
    return Scaler(mode, std::min(0.0, bound), std::max(0.0, bound), 1.0, 10.0);
}

int Exchanger::residuals_() {
    if (!setUp_) return 0;
    if (!sideReactions_.equilibria().empty()) react_(!quiet_);
    hothfluxin = totalEnthalpyFlow(hotIn_());
    coldhfluxin = totalEnthalpyFlow(coldIn_());
    dutycold = eta * dutyhot;
    // Enthalpies hold the heats of formation: what a side's reactions set free or take stays in its own
    // outlet's enthalpy flow, and the duties are the heat that passes the wall.
    hotOut_().P = hotP;
    coldOut_().P = coldP;
    setEnthalpyFlow(hotOut_(), hothfluxin - dutyhot);
    setEnthalpyFlow(coldOut_(), coldhfluxin + dutycold);
    unsigned n = 1;
    for (Stream* out : outletstreams_) {
        out->go(simultaneous, 1);
        Flash& flash = flashOf(*out);
        // A flash without flow switches its residuals off by adding zeros to what its places hold.
        for (unsigned k = 0; k < flash.size(); ++k)
            residuals[n + k].clear();
        n += flash.calculateResiduals(residuals, n);
    }
    calculateApproaches(false, coldOut_().T, hotOut_().T);
    calculateAverage(MTDoption.value(), deltaTcoldApproach, deltaThotApproach, MTD);
    const std::string& mode = option.value();
    if (mode == "Thot")
        residuals[0] = (hotT - hotOut_().T) / Value(1.0, "K");
    else if (mode == "Tcold")
        residuals[0] = (coldT - coldOut_().T) / Value(1.0, "K");
    else
        residuals[0] = (dutyhot / (U * Ft * MTD) - A) / Value(1.0, "m2");
    return static_cast<int>(n) + sideReactions_.equilibriumResiduals(residuals, n);
}

void Exchanger::react_(bool report) {
    if (sideReactions_.empty()) return;
    CoupleReactions::reset(inletstreams_, outletstreams_);
    sideReactions_.react(*this, outletstreams_, report);
}

int Exchanger::calculateResidualsLocal() {
    go(onePass, 1);
    return static_cast<int>(size());
}

void Exchanger::finish_() {
    for (Stream* out : outletstreams_)
        out->calculateX(static_cast<MassBalanceMode>(out->Tphase->representation()));
    calculateApproaches(true, coldOut_().T, hotOut_().T);
    dutycold = dutyhot * eta;
    heat_losses = dutyhot - dutycold;
    const std::string& mode = option.value();
    if (mode != "UA") A = dutyhot / (U * Ft * MTD);
    if (mode != "Tcold") coldT = coldOut_().T;
    if (mode != "Thot") hotT = hotOut_().T;
    deltaTcold = coldOut_().T - coldIn_().T;
    deltaThot = hotOut_().T - hotIn_().T;
}
