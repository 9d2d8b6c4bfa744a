#include <tarvo/components/ListComponents.h>
#include <tarvo/core/SolverNleRecipesAutomatic.h>
#include <tarvo/phases/PhaseMassMolar.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/CalculateAverage.h>
#include <tarvo/units/MultiExchanger.h>
#include <tarvo/units/PressureDrop.h>
#include <tarvo/units/Reaction.h>
#include <tarvo/units/ReactionEquilibrium.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <algorithm>
#include <cassert>
#include <climits>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::FlashMode;
using Tarvo::Utility::MassBalanceMode;
using Tarvo::Utility::ScalingMode;

namespace {
constexpr int verbosityFile = -1;
// The solver's tolerances on the step and on the residuals, the relaxation of its step and its iterations.
constexpr double tolx = 1e-10, tolf = 1e-11, relaxation = 0.5;
constexpr int maxIterations = 100;
// Units made once: a unit's text is parsed where a Value is made from it, and these are made at every evaluation.
const Value kelvin(1.0, "K");
const Value noWatts(0.0, "W");
const Value noConductance(0.0, "W/K");
const Value wattPerKelvin(1.0, "W/K");

// The scaling of Ts where it is not bounded by the inlets.
Scaler anyTemperature() {
    return Scaler(ScalingMode::linear, 0.1, Tmax.toDouble(), 1.0, 10.0);
}

// The flash's own temperature, its unknown, rather than the item that a solve copies it to.
const Value& flashT(const Stream& s) {
    return static_cast<const FlashBase&>(s).T;
}

const Phase::MassMolar& molar(const Stream& s) {
    return *my_cast<const Phase::MassMolar*>(s.Tphase, "MultiExchanger");
}

// The enthalpy that the material which the reactions of a couple took or gave carries at the solid's
// temperature: the sum of the changes of the component flows times their enthalpies at (Ts, P), the
// solid's for a solid and the gas's otherwise.
Value materialEnthalpy(const Stream& in, const Stream& out, const Value& Ts, const Value& P) {
    Value sum = noWatts;
    const auto& before = molar(in).ndotcomps;
    const auto& after = molar(out).ndotcomps;
    for (int c = 0; c < NCOMPONENTS; ++c) {
        if (after[c].toDouble() == before[c].toDouble() && after[c].active().sumAbsoluteDerivatives() == 0.0)
            continue;
        const ComponentGeneric& component = *components[c];
        sum += (after[c] - before[c]) * (component.isSolid() ? component.hs(Ts, P) : component.hv(Ts, P));
    }
    return sum;
}
} // namespace

MultiExchanger::MultiExchanger(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                               Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root), ObjectiveNleAdVertex("MultiExchanger") {
    for (Quantity* q : {&Ts, &TsSet, &A, &beta, &netDuty, &totDuty, &apparentDuty, &maxT, &minT})
        addVariable(*q);
    for (Quantity* q : {&Ts, &netDuty, &totDuty, &apparentDuty, &maxT, &minT})
        q->setOutput();
    option = retrieveString(defaults, id, persistency, "option", "UA");
    for (String* s : {&option, &reactionOrder, &MTDoption})
        addVariable(*s);
    nStreams = retrieveInteger(defaults, id, persistency, "nStreams", 0, INT_MAX, 2);
    if (nStreams.value() <= 1) throw ErrorRunTime(TARVO_FUNCTION, "nStreams.value() > 1");
    nReactions = retrieveInteger(defaults, id, persistency, "nReactions", -1, INT_MAX, 0);
    nmultiReactions = retrieveInteger(defaults, id, persistency, "nmultiReactions", -1, INT_MAX, 0);
    for (Integer* i : {&NITER_Exchanger, &nStreams, &nReactions, &nmultiReactions, &nreactionEquilibriums})
        addVariable(*i);
    const int n = nStreams.value();
    addVariables(T, n, "T", "Temperature of outlet stream", "K", 298.15);
    addVariables(P, n, "P", "Pressure of outlet stream", "Pa", 101325.0);
    addVariables(duty, n, "duty", "Heat transfer duty", "W", 0.0);
    addVariables(Qoffset, n, "Qoffset", "Duty offset", "W", 0.0);
    addVariables(U, n, "U", "Overall heat transfer coefficient", "W/(m2*K)", 100.0);
    addVariables(deltaT, n, "deltaT", "Temperature difference", "K", 0.0);
    addVariables(deltaP, n, "deltaP", "Pressure difference", "Pa", 0.0);
    addVariables(MTD, n, "MTD", "Mean temperature difference", "K", 0.0);
    addVariables(inletApproach, n, "inletApproach", "Temperature approach at inlet", "K", -10.0);
    addVariables(outletApproach, n, "outletApproach", "Temperature approach at outlet", "K", -10.0);
    addVariables(hfluxin, n, "hfluxin", "Heat flux inlet", "W", 0.0);
    addVariables(flowcoefficient, n, "flowcoefficient", "Flow coefficient", "kg/m7", 1000.0);
    addVariables(deltaPMax, n, "deltaPMax", "Maximum allowable pressure drop", "Pa", 0.0);
    addVariables(pressureOption, n, "pressureOption", "Pressure computation option", "D");
    for (auto* items : {&T, &duty, &deltaT, &MTD, &inletApproach, &outletApproach, &hfluxin})
        for (Quantity& q : *items)
            q.setOutput();
    const int nr = nReactions.value(), nm = nmultiReactions.value();
    addVariables(reactionSides, nr, "reactionSides", "heat exchange side the reactions are taking place", -1);
    for (int i = 0; i < nr; ++i)
        reactionSides[i] = reactionSideDefault(defaults, i);
    for (auto [types, count, option] : {std::tuple{&embeddedTypeReactions, nr, "embeddedTypeReactions"},
                                        std::tuple{&embeddedTypemultiReactions, nm, "embeddedTypemultiReactions"}}) {
        addVariable(*types);
        types->resize(count);
        for (int i = 0; i < count; ++i) {
            const std::string type = std::string(option) + "[" + std::to_string(i) + "]";
            (*types)[i] = defaults.hasString(type) ? defaults.getString(type) : " ";
        }
    }
    addSubObjects(verbosityInstance(), defaults, persistency, nr, "reactions", "embedded Reaction",
                  "embeddedTypeReactions", "Reaction", reactions);
    addSubObjects(verbosityInstance(), defaults, persistency, nm, "multiReactions", "embedded MultiReaction",
                  "embeddedTypemultiReactions", "MultiReaction", multiReactions);
    registerSynonym("hotin", "in1");
    registerSynonym("hotout", "out1");
    registerSynonym("coldin", "in2");
    registerSynonym("coldout", "out2");
    maxNIn = n;
    maxNOut = n;
    for (int i = 0; i < n; ++i)
        inletRequired(static_cast<unsigned>(i));
}

MultiExchanger::~MultiExchanger() = default;

void MultiExchanger::setup() {
    for (const Integer& side : reactionSides)
        if (side.value() < 0 || side.value() >= nStreams.value()) reportError("ReactionSide not set");
}

bool MultiExchanger::ready_() {
    const int n = nStreams.value();
    if (nIn.value() != n) throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "nStreams.value() == nIn.value()");
    if (nOut.value() != n) throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "nStreams.value() == nOut.value()");
    if (!couplesConnected_(static_cast<std::size_t>(n))) return false;
    // Multi-stream reactions act between the first two couples, the sides of a membrane.
    cells_.clear();
    for (MultiReaction<2>* m : multiReactions) {
        m->workOn({my_cast_in<Phase::MassMolar*>(outletstreams_[0]->Tphase, __PRETTY_FUNCTION__),
                   my_cast_in<Phase::MassMolar*>(outletstreams_[1]->Tphase, __PRETTY_FUNCTION__)});
        if (auto* cell = dynamic_cast<MultiReactionElectrochemical*>(m)) cells_.push_back(cell);
    }
    return coupleReactions_.bind(*this, reactions, reactionSides, outletstreams_, "ReactionSide not set");
}

// Ts is an unknown in both options, so that the system stays square: in "UA" the solid's balance fixes it,
// in "Ts" the equation Ts = TsSet. Each outlet's temperature is the unknown of its own flash; its approach
// to Ts is a result, outletApproach, not an unknown of its own, which no equation would fix.
void MultiExchanger::setup_of() {
    if (setUp_) return;
    if (!ready_()) return;
    setUp_ = true;
    addUnknown(&Ts, anyTemperature(), "Ts");
    for (Stream* out : outletstreams_)
        addObjectiveFunction(flashOf(*out));
    const auto& equilibria = coupleReactions_.equilibria();
    for (std::size_t i = 0; i < equilibria.size(); ++i)
        addUnknown(&equilibria[i]->conv, Scaler(ScalingMode::linear, -0.001, 0.001, 1.0, 10.0),
                   "reaction[" + std::to_string(i) + "]");
    nreactionEquilibriums = static_cast<int>(equilibria.size());
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (cells_[i]->electrical())
            addUnknown(&cells_[i]->J, Scaler(ScalingMode::linear, 0.0, 1e4, 1.0, 10.0),
                       "multiReaction[" + std::to_string(i) + "]");
    solver_ = std::make_unique<SolverNleRecipesAutomatic>(static_cast<int>(size()), this);
    solver_->setTolerances(0, tolx, tolf, 0);
    solver_->setStepFactor(relaxation);
    solver_->setMaxIterations(maxIterations);
}

bool MultiExchanger::reactingInside_() const {
    return !coupleReactions_.equilibria().empty() ||
           std::any_of(cells_.begin(), cells_.end(), [](const auto* cell) { return cell->electrical(); });
}

Value MultiExchanger::electricalPower_() const {
    Value power = noWatts;
    for (const MultiReactionElectrochemical* cell : cells_)
        if (cell->active()) power += cell->electricalPower();
    return power;
}

Value MultiExchanger::energyBalance() const {
    return netDuty + electricalPower_();
}

void MultiExchanger::computeReactionConversions_(bool report) {
    CoupleReactions::reset(inletstreams_, outletstreams_);
    const std::string& order = reactionOrder.value();
    if (order != "reactionsfirst" && order != "multireactionfirst")
        throw ErrorBrowsing::unsupportedOption(TARVO_FUNCTION, order, "Order of Reaction conversion computation",
                                               fullTag(), type());
    const auto multi = [&] {
        for (MultiReactionElectrochemical* cell : cells_)
            cell->atState(Ts, P[0], P[1]);
        for (MultiReaction<2>* m : multiReactions) {
            m->calculate(0);
            m->apply();
        }
    };
    if (order == "multireactionfirst") multi();
    coupleReactions_.react(*this, outletstreams_, report);
    if (order == "reactionsfirst") multi();
    if (!multiReactions.empty())
        for (int side = 0; side < 2; ++side)
            settleFlows(*outletstreams_[side]);
}

void MultiExchanger::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    assert(nStreams.value() > 1);
    assert(nreactionEquilibriums.value() >= 0);
    assert(nReactions.value() >= 0);
    assert(nmultiReactions.value() >= 0);
    if (pristine()) setup();
    setup_of();
    if (!setUp_) return; // reported
    const std::size_t n = outletstreams_.size();
    for (std::size_t i = 0; i < n; ++i) {
        Stream& in = *inletstreams_[i];
        Stream& out = *outletstreams_[i];
        if (i == 0 || in.T > maxT) maxT = in.T;
        if (i == 0 || in.T < minT) minT = in.T;
        pressureDrop(this, pressureOption[i].value(), deltaP[i], deltaPMax[i], beta, in.P, P[i], flowcoefficient[i],
                     volumeFlow(in), "MultiExchanger::go");
        *out.Tphase = *in.Tphase;
        hfluxin[i] = totalEnthalpyFlow(in);
    }
    heatCapacityFlow_ = 0.0;
    for (Stream* in : inletstreams_) {
        const auto& total = *my_cast_in<const Phase::MassMolarProperties*>(in->Tphase, __PRETTY_FUNCTION__);
        heatCapacityFlow_ += total.mdot.toDouble() * total.cp.toDouble();
    }
    if (pristine() && mode == sequential) coupleReactions_.estimate(inletstreams_, outletstreams_);
    if (!reactingInside_()) computeReactionConversions_(true);
    if (mode >= simultaneous)
        residuals_();
    else
        solve_(level);
    finish_();
    calculateBalance();
    countCalculation();
    TARVO_LOG(3) << "Done";
}

// The solid's temperature lies between the inlets', and at least 1 K wide. Its first guess lies inside the
// same bounds: the middle of them, or in option "Ts" the set value. A stack of cells is the exception: the
// heat of its reaction less its power warms the solid above every inlet, or an electrolyzer cools it below,
// so its solid may take any temperature, from a first guess 50 K above the hottest inlet.
void MultiExchanger::solve_(int level) {
    const double lo = std::min(maxT.toDouble() - 1.0, minT.toDouble());
    const double hi = std::max(maxT.toDouble(), minT.toDouble() + 1.0);
    if (option.value() != "UA") {
        Ts = TsSet;
        setScaler(0, anyTemperature());
    } else if (!cells_.empty()) {
        if (pristine()) Ts = maxT + Value(50.0, "K");
        setScaler(0, anyTemperature());
    } else {
        if (pristine() || !(Ts.toDouble() > lo && Ts.toDouble() < hi)) Ts = Value(0.5 * (lo + hi), "K");
        setScaler(0, Scaler(ScalingMode::arctangentExclusive, lo, hi, 1.0, 10.0));
    }
    if (reactingInside_()) computeReactionConversions_(false);
    // The outlets start halfway between their inlets and the solid, each from its own flash there.
    for (std::size_t i = 0; i < outletstreams_.size(); ++i) {
        Stream& out = *outletstreams_[i];
        out.T = (inletstreams_[i]->T + Ts) / 2.0;
        out.P = P[i];
        refreshOutlet(out, FlashMode::PT, sequential, level + 1);
    }
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

int MultiExchanger::residuals_() {
    if (!setUp_) return 0;
    if (reactingInside_()) computeReactionConversions_(!quiet_);
    const std::string& mode = option.value();
    const bool ua = mode == "UA";
    if (!ua && mode != "Ts")
        throw ErrorBrowsing::unsupportedOption(TARVO_FUNCTION, mode, "Calculation mode", fullTag(), type());
    const bool reacting = !reactions.empty() || !multiReactions.empty();
    Value balance = noWatts;
    Value conductance = noConductance;
    // netDuty is cleared in both options: in "Ts" it is the sum of this evaluation, not of all of them.
    netDuty.clear();
    totDuty.clear();
    unsigned k = 1;
    for (std::size_t i = 0; i < outletstreams_.size(); ++i) {
        Stream& in = *inletstreams_[i];
        Stream& out = *outletstreams_[i];
        inletApproach[i] = in.T - Ts;
        outletApproach[i] = flashT(out) - Ts;
        T[i] = flashT(out);
        calculateAverage(MTDoption.value(), inletApproach[i], outletApproach[i], MTD[i]);
        duty[i] = U[i] * A * MTD[i] + Qoffset[i];
        totDuty += duty[i];
        conductance += U[i] * A;
        // The material that the reactions took from the couple carries its enthalpy at Ts into the solid.
        const Value q = reacting ? -materialEnthalpy(in, out, Ts, P[i]) : noWatts;
        if (ua)
            balance += duty[i] + q;
        else
            netDuty += duty[i] + q;
        out.P = P[i];
        setEnthalpyFlow(out, hfluxin[i] - duty[i] - q);
        out.go(simultaneous, 1);
        Flash& flash = flashOf(out);
        // A flash without flow switches its residuals off by adding zeros to what its places hold.
        for (unsigned j = 0; j < flash.size(); ++j)
            residuals[k + j].clear();
        k += flash.calculateResiduals(residuals, k);
    }
    // What the cells deliver as electricity leaves the solid's balance; what an electrolyzer takes enters it.
    const Value power = electricalPower_();
    if (!ua) netDuty -= power;
    // The solid's balance measured in the temperature that would carry it through the whole conductance and
    // into the inlets' heat capacity flows. A solid that barely conducts, as a membrane's, would otherwise
    // magnify the rounding of the enthalpy flows beyond any tolerance.
    const Value capacity = heatCapacityFlow_ * wattPerKelvin;
    residuals[0] = ua ? (balance - netDuty - power) / (conductance + capacity) / kelvin : (TsSet - Ts) / kelvin;
    k += static_cast<unsigned>(coupleReactions_.equilibriumResiduals(residuals, k));
    for (const MultiReactionElectrochemical* cell : cells_)
        if (cell->electrical()) residuals[k++] = cell->electricalResidual();
    return static_cast<int>(k);
}

int MultiExchanger::calculateResidualsLocal() {
    go(onePass, 1);
    return static_cast<int>(size());
}

void MultiExchanger::finish_() {
    apparentDuty.clear();
    for (std::size_t i = 0; i < outletstreams_.size(); ++i) {
        Stream& in = *inletstreams_[i];
        Stream& out = *outletstreams_[i];
        out.calculateX(static_cast<MassBalanceMode>(out.Tphase->representation()));
        T[i] = out.T;
        deltaT[i] = out.T - in.T;
        apparentDuty += totalEnthalpyFlow(out) - totalEnthalpyFlow(in);
    }
    if (option.value() == "UA") TsSet = Ts;
}
