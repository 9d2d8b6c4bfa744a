#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/Compressor.h>
#include <tarvo/units/PressureDrop.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::FlashMode;
using Tarvo::Utility::PhaseIndex;

namespace {
constexpr int verbosityFile = -1;

Phase::MassMolarProperties& properties(Stream& stream) {
    return *my_cast_in<Phase::MassMolarProperties*>(stream.Tphase, __PRETTY_FUNCTION__);
}
} // namespace

Compressor::Compressor(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                       Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root),
      ElectricalConsumption(defaults, id, persistency, parent, root), ObjectiveNleAdVertex("Compressor") {
    for (Quantity* q : {&T, &P, &duty, &alfa, &deltas, &deltaP, &flowcoefficient, &deltaPMax, &beta, &Tavg})
        addVariable(*q);
    addVariable(NITER);
    option = retrieveString(defaults, id, persistency, "option", "P");
    addVariable(option);
    for (Quantity* q : {&cr, &theta, &Wfis, &Wf, &Wm, &etaM, &etaE, &Tis})
        addVariable(*q);
    for (Quantity* q : {&T, &P, &duty, &alfa, &deltaP, &cr, &Wfis, &Wf, &Wm, &Tis})
        q->setOutput();
    for (Quantity* q : {&theta, &etaM, &etaE})
        q->setInput();
    maxNIn = -1;
    maxNOut = 1;
    inletRequired(0);
}

Compressor::~Compressor() = default;

void Compressor::setup_of() {
    if (isentropic_) return;
    collectStreams_();
    if (outletstreams_.empty() || !outletstreams_[0]) return; // the calculation reports it
    Stream& out = *outletstreams_[0];
    feeds_.clear();
    for (EdgeBase* edge : inlets_)
        if (edge) feeds_.push_back(edge);
    // A tree of its own: made under the unit, its phases would take ids from the case and shift the ids of
    // every node after the unit, so that the results of a retrieved case went back to the wrong rows.
    isentropicNode_.reset(NodeFactory::create(out.type(), Defaults("ISENTROPIC", "Isentropic end state"), 0,
                                              nullptr, nullptr, nullptr));
    isentropic_ = my_cast<Stream*>(isentropicNode_.get(), TARVO_FUNCTION);
    isentropic_->initializeNonPersistents();
    addObjectiveFunction(flashOf(out));
    addObjectiveFunction(flashOf(*isentropic_));
}

bool Compressor::ready_() {
    if (!firstInletConnected_()) return false;
    if (outletstreams_.empty() || !outletstreams_[0]) {
        reportError("no outlet connected, nothing to do");
        return false;
    }
    setup_of();
    return true;
}

void Compressor::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    if (!ready_()) return;
    evaluate_(mode, level);
    calculateBalance();
    countCalculation();
    TARVO_LOG(3) << "Done";
}

int Compressor::calculateResidualsLocal() {
    go(onePass, 1);
    return static_cast<int>(size());
}

void Compressor::evaluate_(SolutionMode mode, int level) {
    // The pressure is given, or its drop: a drop that its limit clips, or a flow coefficient, would not let
    // the machine raise the pressure. Refused before any stream is touched.
    if (option.value() != "P" && option.value() != "D")
        throw ErrorBrowsing::unsupportedOption(TARVO_FUNCTION, option.value(), "pressure option", fullTag(),
                                               type());
    const bool sequentially = mode < simultaneous;
    Stream& out = *outletstreams_[0];
    Stream& ideal = *isentropic_;
    // The outlet holds the mixed inlets for a moment; the lowest inlet pressure stands for the inlet's.
    gather(level, &out, feeds_, deltaPMax, Tavg);
    const Value inP = deltaPMax;
    pressureDrop(this, option.value(), deltaP, inP, beta, inP, P, flowcoefficient, volumeFlow(out),
                 "Compressor::go");
    out.P = P;
    Phase::MassMolarProperties& total = properties(out);
    const Value H0 = total.mdot * total.h;
    const Value S0 = total.mdot * total.s;

    // The isentropic end state: the inlet's flows and molar entropy at the outlet pressure.
    *ideal.Tphase = *out.Tphase;
    ideal.P = P;
    if (sequentially) ideal.T = Tavg;
    refreshOutlet(ideal, FlashMode::PS, mode, level + 1);
    // The end state is no child of the unit: its messages are the unit's.
    for (const std::string& error : ideal.errorList())
        reportError(error + " @ " + ideal.tag());
    Tis = ideal.T;
    const Phase::MassMolarProperties& end = properties(ideal);
    Wfis = end.mdot * end.h - H0;

    const bool compression = Wfis.toDouble() > 0;
    Wf = compression ? Wfis / theta : Wfis * theta;
    Wm = compression ? Wf / etaM : Wf * etaM;
    We = compression ? Wm / etaE : Wm * etaE;
    calculateElectricalConsumption(level);
    cr = P / inP;
    duty = -Wf;

    // The fluid power enters the outlet as enthalpy; molar, as the flash takes it.
    if (total.ndot.toDouble() > 0) {
        total.H = (H0 - duty) / total.ndot;
        total.h = total.H / total.mw;
    }
    if (sequentially) out.T = Tis; // a start near the end state
    refreshOutlet(out, FlashMode::PH, mode, level + 1);
    if (sequentially) NITER = out.NITER_NLEFlash.value();
    T = out.T;
    const Phase::Mass* vapor = out.findPhase(PhaseIndex::vapor);
    alfa = vapor ? Value(vapor->fraction) : Value(0.0);
    deltas = total.mdot * total.s - S0;
    if (sequentially) return;
    const int n = flashResiduals_(out, 0);
    flashResiduals_(ideal, n);
}

int Compressor::flashResiduals_(Stream& stream, int offset) {
    Flash& flash = flashOf(stream);
    // A flash without flow switches its residuals off by adding zeros to what its places hold.
    for (unsigned k = 0; k < flash.size(); ++k)
        residuals[offset + k].clear();
    return flash.calculateResiduals(residuals, static_cast<uint32_t>(offset));
}
