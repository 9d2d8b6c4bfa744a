#include <tarvo/components/ListComponents.h>
#include <tarvo/core/SolverNleRecipesAutomatic.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/FlashDrumBase.h>
#include <tarvo/units/PressureDrop.h>
#include <tarvo/units/ReactionEquilibrium.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <algorithm>
#include <cassert>
#include <climits>
#include <cmath>
#include <limits>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::FlashMode;
using Tarvo::Utility::MassBalanceMode;
using Tarvo::Utility::PhaseIndex;
using Tarvo::Utility::ScalingMode;

namespace {
constexpr int verbosityFile = -1;
// A change of flow below this, in kmol/s, consumes the component.
constexpr double consumed = 2.220446049250313e-15;
// A vapor fraction outside [0, 1] by more than this is reported.
constexpr double fractionTolerance = 2.220446049250313e-8;
const Value dutyTolerance(1000.0, "W");
const Value deltasTolerance(1000.0, "W/K");
const Value smallMassFlow(0.1, "kg/h");

Phase::MassMolarProperties* withProperties(Stream& stream) {
    return dynamic_cast<Phase::MassMolarProperties*>(stream.Tphase);
}
} // namespace

FlashDrumBase::FlashDrumBase(const Defaults& defaults, uint32_t id, Persistency* persistency,
                             Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), ObjectiveNleAdVertex("FlashDrumBase") {
    for (Quantity* q : {&T, &P, &duty, &alfa, &deltas, &deltaP, &flowcoefficient, &deltaPMax, &beta})
        addVariable(*q);
    deltaPMax.setOutput();
    option = retrieveString(defaults, id, persistency, "option", "PT");
    reactionMode = retrieveString(defaults, id, persistency, "reactionMode", "series");
    nReactions = retrieveInteger(defaults, id, persistency, "nReactions", -1, INT_MAX, 0);
    for (String* s : {&option, &reactionMode})
        addVariable(*s);
    for (Integer* i : {&nReactions, &nreactionEquilibriums, &NITER})
        addVariable(*i);
    addVariable(embeddedTypeReactions);
    const int n = nReactions.value();
    embeddedTypeReactions.resize(n);
    for (int i = 0; i < n; ++i) {
        const std::string type = "embeddedTypeReactions[" + std::to_string(i) + "]";
        embeddedTypeReactions[i] = defaults.hasString(type) ? defaults.getString(type) : " ";
    }
    addSubObjects(verbosityInstance(), defaults, persistency, n, "reactions", "embedded Reaction",
                  "embeddedTypeReactions", "Reaction", reactions);
}

FlashDrumBase::~FlashDrumBase() = default;

char FlashDrumBase::letter_(std::size_t position) const {
    if (option.value().size() != 2) badOption_();
    return option.value()[position];
}

void FlashDrumBase::badOption_() const {
    throw ErrorBrowsing::unsupportedOption("FlashDrumBase::setFlash_", option.value(),
                                           "Flash configuration option", fullTag(), type());
}

void FlashDrumBase::setup_of() {
    if (setUp_) return;
    Stream* stream = calculatedStream_();
    if (!stream) return; // the unit reports what it lacks
    setUp_ = true;
    addObjectiveFunction(flashOf(*stream));
    for (std::size_t i = 0; i < reactions.size(); ++i) {
        auto* rY = dynamic_cast<ReactionYield*>(reactions[i]);
        assert(rY != nullptr);
        rY->workOn(stream->Tphase);
        yields_.push_back(rY);
        if (!rY->isEquilibrium()) continue;
        // Bounds that hold until the feeds are known; each sequential solve takes them from the feeds.
        addUnknown(&rY->conv, Scaler(ScalingMode::linear, -1.0, 1.0, 1.0, 10.0),
                   "reaction[" + std::to_string(i) + "].conv");
        equilibria_.push_back(dynamic_cast<ReactionEquilibrium*>(rY));
    }
    nreactionEquilibriums = static_cast<int>(equilibria_.size());
    solver_ = std::make_unique<SolverNleRecipesAutomatic>(static_cast<int>(size()), this);
    solver_->setTolerances(0, 0, Flash::tolerance, 0);
}

void FlashDrumBase::takeInlet_() {
    const Phase::Mass& total = *calculatedStream_()->Tphase;
    pin_.flows.resize(NCOMPONENTS);
    for (int i = 0; i < NCOMPONENTS; ++i)
        pin_.flows[i] = total.flow(i);
    pin_.flow = total.totalFlow();
    pin_.mdot = total.mdot;
    pin_.vdot = volumeFlow(*calculatedStream_());
    const auto* properties = dynamic_cast<const Phase::MassMolarProperties*>(&total);
    pin_.properties = properties != nullptr;
    if (!properties) return;
    pin_.enthalpyFlow = total.mdot * properties->h;
    pin_.entropyFlow = total.mdot * properties->s;
}

void FlashDrumBase::resetFlows_() {
    Phase::Mass& total = *calculatedStream_()->Tphase;
    for (int i = 0; i < NCOMPONENTS; ++i)
        total.flow(i) = pin_.flows[i];
    total.totalFlow() = pin_.flow;
}

void FlashDrumBase::go(Calculatable::SolutionMode mode, int level) {
    assert(nReactions.value() >= 0);
    assert(nreactionEquilibriums.value() >= 0);
    setup_of();
    const char pressureLetter = letter_(0);
    pressureDrop(this, std::string(1, pressureLetter), deltaP, deltaPMax, beta, deltaPMax, P, flowcoefficient,
                 pin_.vdot, "FlashDrumBase::go");
    // Only a drum never calculated starts from estimates; one calculated before, or retrieved from the store,
    // starts from the extents that it holds.
    if (mode < Calculatable::simultaneous && pristine()) estimate_();
    // The flows at the present extents. Those of yield reactions do not change while the flash iterates;
    // those at equilibrium do, and report from the final evaluation.
    computeReactionConversions_(equilibria_.empty());
    setFlash_();
    if (mode < Calculatable::simultaneous)
        solve_(mode, level);
    else
        drumResiduals_();
    finish_();
}

void FlashDrumBase::solve_(Calculatable::SolutionMode mode, int level) {
    Stream& stream = *calculatedStream_();
    // The stream's own flash finds its state from bracketing searches, which Newton's method alone, on the
    // drum's system, would not: its solution is the start of the drum's solve, and without equilibrium
    // reactions it is the drum's solution itself.
    stream.go(mode, level + 1);
    if (equilibria_.empty()) {
        NITER = stream.NITER_NLEFlash.value();
        return;
    }
    refreshBounds_();
    quiet_ = true;
    init(solver_->x());
    const int status = solver_->solve();
    quiet_ = false;
    drumResiduals_(); // the state at the solution, with its messages
    NITER = solver_->iterations();
    if (status < 0) reportWarning(solver_->statusText(status));
    if (status > 0) reportError(solver_->statusText(status));
    if (status != 0 && solver_->failed()) reportError("Flash convergence failure in FlashDrumBase::go;");
}

void FlashDrumBase::refreshBounds_() {
    constexpr double unbounded = std::numeric_limits<double>::infinity();
    const unsigned first = size() - static_cast<unsigned>(equilibria_.size());
    for (std::size_t j = 0; j < equilibria_.size(); ++j) {
        ReactionEquilibrium& r = *equilibria_[j];
        if (!r.active()) continue;
        double forward = unbounded, backward = unbounded;
        for (int i = 0; i < NCOMPONENTS; ++i) {
            const double perExtent = r.perExtent(i).toDouble();
            if (perExtent == 0.0) continue;
            double& limit = perExtent < 0 ? forward : backward;
            limit = std::min(limit, pin_.flows[i].toDouble() / std::fabs(perExtent));
        }
        // A reaction without reactants or products in its stoichiometry has no limit on that side.
        const double scale = std::max(pin_.flow.toDouble(), 1e-300);
        double lo = std::isfinite(backward) ? -backward : -scale;
        double hi = std::isfinite(forward) ? forward : scale;
        if (!(hi > lo)) { // nothing can react either way: the extent stays near zero
            lo = -1e-12 * scale;
            hi = 1e-12 * scale;
        }
        const double span = hi - lo;
        const double start = std::clamp(r.conv.toDouble(), lo + 1e-3 * span, hi - 1e-3 * span);
        if (start != r.conv.toDouble()) r.conv = Value(start, "kmol/s");
        setScaler(first + static_cast<unsigned>(j),
                  Scaler(ScalingMode::arctangentExclusive, lo, hi, 1.0, 10.0));
    }
}

int FlashDrumBase::drumResiduals_() {
    Stream* stream = calculatedStream_();
    if (!setUp_ || !stream) return 0; // an objective without unknowns
    if (!equilibria_.empty()) computeReactionConversions_(!quiet_);
    setFlash_();
    stream->go(Calculatable::simultaneous, 1);
    Flash& flash = flashOf(*stream);
    // A flash without flow switches its residuals off by adding zeros to what its places hold.
    for (unsigned k = 0; k < flash.size(); ++k)
        residuals[k].clear();
    int n = flash.calculateResiduals(residuals, 0);
    if (equilibria_.empty()) return n;
    computeReactionEquilibria_();
    for (const ReactionEquilibrium* r : equilibria_)
        r->calculateResidual(residuals[n++]);
    return n;
}

void FlashDrumBase::setFlash_() {
    Stream& stream = *calculatedStream_();
    stream.P = P;
    switch (letter_(1)) {
    case 'T':
        stream.T = T;
        stream.setFlashOption(FlashMode::PT);
        break;
    case 'A':
        stream.Q("Vphase.fraction") = alfa;
        stream.setFlashOption(FlashMode::PA);
        break;
    case 'H': {
        auto& total = *my_cast<Phase::MassMolarProperties*>(stream.Tphase, TARVO_FUNCTION);
        // Molar, since the reactions change the moles and not the mass.
        if (total.ndot.toDouble() > 0) {
            total.H = (pin_.enthalpyFlow - duty) / total.ndot;
            total.h = total.H / total.mw;
        }
        TARVO_LOG(3) << "Calling outlet stream PH Flash with H = " << total.H.toDouble();
        stream.setFlashOption(FlashMode::PH);
        break;
    }
    case 'S': {
        auto& total = *my_cast<Phase::MassMolarProperties*>(stream.Tphase, TARVO_FUNCTION);
        if (total.ndot.toDouble() > 0) {
            total.S = (pin_.entropyFlow - deltas) / total.ndot;
            total.s = total.S / total.mw;
        }
        stream.setFlashOption(FlashMode::PS);
        break;
    }
    default:
        badOption_();
    }
}

void FlashDrumBase::estimate_() {
    resetFlows_();
    const bool series = reactionMode.value() == "series";
    for (ReactionYield* r : yields_) {
        if (r->isEquilibrium() && r->conv.toDouble() == 0.0) r->estimateExtent();
        if (!series) continue;
        r->precalc();
        r->bound();
        r->postcalc();
    }
}

void FlashDrumBase::computeReactionConversions_(bool report) {
    Stream& stream = *calculatedStream_();
    resetFlows_();
    const std::string& mode = reactionMode.value();
    if (mode == "series") {
        for (ReactionYield* r : yields_) {
            r->precalc();
            r->bound();
            r->postcalc();
        }
    } else if (mode == "parallel") {
        reactInParallel_(report);
    } else {
        throw ErrorBrowsing::unsupportedOption(TARVO_FUNCTION, mode, "Reaction processing mode", fullTag(),
                                               type());
    }
    Phase::Mass& total = *stream.Tphase;
    const MassBalanceMode flows = Phase::flowonly(static_cast<MassBalanceMode>(total.representation()));
    stream.setFlowOption(flows);
    total.calculateX(flows);
    if (!report) return;
    const Value d = fabs(total.mdot - pin_.mdot);
    const Value m = fabs(total.mdot) + smallMassFlow;
    if (d > m / 1000.0)
        reportError("unbalanced reactions");
    else if (d > m / 100000.0)
        reportWarning("unbalanced reactions");
}

// All reactions act on the inlet. Where together they consume more of a component than there is, every one
// that consumes it is cut by the share that makes the total consumption equal to the flow; the warnings name
// the reactions that take the component, and those that make it, whose own limits stand.
void FlashDrumBase::reactInParallel_(bool report) {
    for (ReactionYield* r : yields_)
        r->precalc();
    std::vector<double> reductions(yields_.size(), 1.0);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        double change = 0, consumption = 0;
        for (const ReactionYield* r : yields_) {
            if (!r->active()) continue;
            const double d = r->deltan(i).toDouble();
            change += d;
            if (d < 0) consumption -= d;
        }
        const double flow = pin_.flows[i].toDouble();
        if (!(change < -consumed && -change > flow)) continue;
        const std::string& name = components[i]->name;
        if (report) reportWarning("Conversion too high for component " + name);
        for (std::size_t r = 0; r < yields_.size(); ++r) {
            if (!yields_[r]->active()) continue;
            const double d = yields_[r]->deltan(i).toDouble();
            if (d == 0) continue;
            if (d < 0) reductions[r] = std::min(reductions[r], flow / consumption);
            if (report)
                reportWarning(name +
                              (d < 0 ? " is a heterogeneous reactant of reaction "
                                     : " is a heterogeneous product of reaction ") +
                              yields_[r]->tag());
        }
    }
    for (std::size_t r = 0; r < yields_.size(); ++r)
        yields_[r]->scaleExtent(reductions[r]);
    Phase::Mass& total = *calculatedStream_()->Tphase;
    for (int i = 0; i < NCOMPONENTS; ++i)
        for (const ReactionYield* r : yields_)
            if (r->active()) total.flow(i) += r->deltan(i);
}

void FlashDrumBase::computeReactionEquilibria_() {
    Stream& stream = *calculatedStream_();
    const Vector& x = my_cast<Phase::MassMolar*>(stream.Tphase, TARVO_FUNCTION)->x.value();
    for (ReactionEquilibrium* r : equilibria_) {
        r->Tact = stream.T;
        r->P = stream.P;
        r->calculateEquilibrium(x);
    }
}

void FlashDrumBase::finish_() {
    TARVO_LOG(3) << "Calculating duty and deltas if required and set local canonical state";
    Stream& stream = *calculatedStream_();
    const char state = letter_(1);
    if (state != 'A') {
        const Phase::Mass* vapor = stream.findPhase(PhaseIndex::vapor);
        alfa = vapor ? Value(vapor->fraction) : Value(0.0);
    }
    if (state != 'T') T = stream.T;
    const auto* total = withProperties(stream);
    if (total && pin_.properties) {
        const Value enthalpyDifference = pin_.enthalpyFlow - total->mdot * total->h;
        const Value entropyDifference = pin_.entropyFlow - total->mdot * total->s;
        if (state != 'H')
            duty = enthalpyDifference;
        else if (fabs(duty - enthalpyDifference) > dutyTolerance)
            reportWarning("Dubious duty convergence");
        if (state != 'S')
            deltas = entropyDifference;
        else if (fabs(deltas - entropyDifference) > deltasTolerance)
            reportWarning("Dubious deltas convergence");
    } else {
        if (state != 'H') duty.clear();
        if (state != 'S') deltas.clear();
    }
    if (state != 'A') return;
    if (alfa.toDouble() < -fractionTolerance) reportError("negative phase fraction in FlashDrumBase::go");
    if (alfa.toDouble() > 1 + fractionTolerance)
        reportError("phase fraction larger than one in FlashDrumBase::go");
}
