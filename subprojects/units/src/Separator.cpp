#include <tarvo/components/ListComponents.h>
#include <tarvo/core/Scaler.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Flash.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/PressureDrop.h>
#include <tarvo/units/Separator.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <cassert>
#include <climits>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::FlashMode;
using Tarvo::Utility::MassBalanceMode;
using Tarvo::Utility::ScalingMode;

namespace {
constexpr int verbosityFile = -1;

Value positive(const Value& v) {
    return v > zero ? v : zero;
}

// Built once: a unit string is parsed at the system's edges, not on every calculation.
const Value noDuty(0.0, "W");

const Phase::MassMolarProperties* withProperties(const Stream& stream) {
    return dynamic_cast<const Phase::MassMolarProperties*>(stream.Tphase);
}
} // namespace

Separator::Separator(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                     Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Connectivity(defaults, id, persistency, parent, root), ObjectiveNleAdVertex("Separator") {
    for (Quantity* q : {&T, &P, &duty, &deltaP, &flowcoefficient, &deltaPMax, &beta, &Tavg})
        addVariable(*q);
    for (Quantity* q : {&T, &P, &deltaP, &Tavg})
        q->setOutput();
    option = retrieveString(defaults, id, persistency, "option", "P");
    addVariable(option);
    nOutlets = retrieveInteger(defaults, id, persistency, "nOutlets", 0, INT_MAX, 2);
    if (nOutlets.value() <= 1) throw ErrorRunTime(TARVO_FUNCTION, "nOutlets.value() > 1");
    addVariable(nOutlets);
    const int n = nOutlets.value();
    addVariables(outSplitTotal, n, "outSplitTotal", "Split fraction for all components", "", 0.0);
    addVariables(deltaPstream, n, "deltaPstream", "Pressure drop for individual streams", "Pa", 0.0);
    outSplit.resize(n); // sized first: the item maps point into the inner vectors
    for (int j = 0; j < n; ++j)
        addComponentVariables(outSplit[j], "outSplit[" + std::to_string(j) + "]",
                              "Split to out[" + std::to_string(j) + "]", "", 1.0);
    maxNIn = -1;
    maxNOut = n;
}

bool Separator::testconnect_() {
    if (nOutlets.value() != nOut.value())
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "nOutlets.value() == nOut.value()");
    feeds_.clear();
    for (EdgeBase* edge : inlets_)
        if (edge) feeds_.push_back(edge);
    if (feeds_.empty()) {
        reportError("no inlet connected, nothing to do");
        return false;
    }
    for (const Stream* out : outletstreams_)
        if (!out) {
            reportError("not all outlets are properly connected, nothing to do");
            return false;
        }
    return true;
}

void Separator::setup_of() {
    if (connected_) return;
    collectStreams_();
    connected_ = testconnect_();
    if (!connected_) return; // reported; tried again at the next calculation
    for (Stream* out : outletstreams_)
        addObjectiveFunction(flashOf(*out));
    // Sized once: the solver holds pointers into them.
    outletFlows_.assign(outletstreams_.size() * NCOMPONENTS, Value());
    flowResiduals_.assign(outletstreams_.size() * NCOMPONENTS, Value());
    for (std::size_t j = 0; j < outletstreams_.size(); ++j)
        for (int c = 0; c < NCOMPONENTS; ++c) {
            Value& flow = outletFlows_[j * NCOMPONENTS + c];
            const Value& present = outletstreams_[j]->Tphase->flow(c);
            flow = Value(present.toDouble(), present.units()); // in the outlets' units from the start
            addUnknown(&flow, Scaler(ScalingMode::noscaling, 0.0, 1.0, 1.0, 10.0),
                       "outlet[" + std::to_string(j) + "] flow[" + std::to_string(c) + "]");
        }
    // Without units until the first feed: flows are in mass or in moles by the outlets' kind.
    feedFlows_.assign(NCOMPONENTS, Value());
    feedFractions_.assign(NCOMPONENTS, Value());
}

void Separator::normalize_() {
    const std::size_t last = outSplit.size() - 1;
    for (int c = 0; c < NCOMPONENTS; ++c) {
        Value others = 0.0;
        for (std::size_t j = 0; j < last; ++j)
            others += positive(outSplit[j][c]);
        // Splits that give away more than all of a component are scaled to all of it, and the last outlet
        // gets none: a result of the splits alone, not of what the last outlet held from a calculation before.
        if (others > one) {
            for (std::size_t j = 0; j < last; ++j)
                outSplit[j][c] = positive(outSplit[j][c]) / others;
            outSplit[last][c] = 0.0;
        } else {
            outSplit[last][c] = 1.0 - others;
        }
    }
}

void Separator::calculateFlows_(bool unknown) {
    TARVO_LOG(4) << "calculate outlet flows from splits";
    const int representation = outletstreams_[0]->Tphase->representation();
    for (std::size_t j = 0; j < outletstreams_.size(); ++j) {
        Phase::Mass& total = *outletstreams_[j]->Tphase;
        assert(total.representation() == representation);
        Value& flow = total.totalFlow();
        flow.clear();
        outSplitTotal[j].clear();
        Value* given = &outletFlows_[j * NCOMPONENTS];
        for (int c = 0; c < NCOMPONENTS; ++c) {
            const Value split = positive(outSplit[j][c]);
            const Value share = feedFlows_[c] * split;
            if (unknown)
                flowResiduals_[j * NCOMPONENTS + c] = given[c] - share;
            else
                given[c] = Value(share.toDouble(), share.units()); // the solver's start
            flow += unknown ? given[c] : share;
            outSplitTotal[j] += split;
        }
        for (int c = 0; c < NCOMPONENTS; ++c) {
            const Value share = unknown ? given[c] : feedFlows_[c] * positive(outSplit[j][c]);
            total.frac(c) = flow.toDouble() != 0.0 ? share / flow : feedFractions_[c];
        }
    }
}

void Separator::evaluate_(int level, bool unknownFlows) {
    normalize_();
    Stream& first = *outletstreams_[0];
    // The first outlet holds the whole feed for a moment; the lowest inlet pressure is the limit of the drop.
    gather(level, &first, feeds_, deltaPMax, Tavg);
    const Value inP = deltaPMax;
    const auto* feed = withProperties(first);
    duty = feed ? first.Tphase->mdot * feed->h : noDuty;
    for (int c = 0; c < NCOMPONENTS; ++c) {
        feedFlows_[c] = first.Tphase->flow(c);
        feedFractions_[c] = first.Tphase->frac(c);
    }
    const Value vdot = volumeFlow(first);
    if (option.value() == "S") {
        deltaP.clear();
        for (std::size_t j = 0; j < outletstreams_.size(); ++j) {
            Value& outP = outletstreams_[j]->P;
            outP = deltaPstream[j] > inP * beta ? inP * (1.0 - beta) : inP - deltaPstream[j];
            if (inP - outP > deltaP) deltaP = inP - outP;
        }
        P = inP - deltaP;
        flowcoefficient = deltaP / vdot / vdot;
    } else {
        pressureDrop(this, option.value(), deltaP, inP, beta, inP, P, flowcoefficient, vdot, "Separator::go");
        for (std::size_t j = 0; j < outletstreams_.size(); ++j) {
            outletstreams_[j]->P = P;
            deltaPstream[j] = deltaP;
        }
    }
    const auto representation = static_cast<MassBalanceMode>(first.Tphase->representation());
    assert(representation == MassBalanceMode::Nx || representation == MassBalanceMode::Mx ||
           representation == MassBalanceMode::Nw || representation == MassBalanceMode::Mw);
    calculateFlows_(unknownFlows);
    TARVO_LOG(3) << "Flash outlet streams and compute duty";
    for (Stream* out : outletstreams_) {
        out->T = T;
        out->setFlashOption(FlashMode::PT);
        out->setFlowOption(representation);
    }
}

void Separator::finish_() {
    for (const Stream* out : outletstreams_) {
        const auto* total = withProperties(*out);
        if (total && out->Tphase->totalFlow().toDouble() > 0.0) duty -= out->Tphase->mdot * total->h;
    }
    calculateBalance();
}

int Separator::calculateResidualsLocal() {
    if (!connected_) return 0; // an objective without unknowns
    evaluate_(0, true);
    int n = 0;
    for (Stream* out : outletstreams_) {
        // The stream's own simultaneous calculation: specifications and phases, its flash not iterated.
        out->go(simultaneous, 1);
        Flash& flash = flashOf(*out);
        // A flash without flow switches its residuals off by adding zeros to what its places hold.
        for (unsigned k = 0; k < flash.size(); ++k)
            residuals[n + k].clear();
        n += flash.calculateResiduals(residuals, static_cast<uint32_t>(n));
    }
    for (const Value& r : flowResiduals_)
        residuals[n++] = r;
    finish_();
    return n;
}

void Separator::go(SolutionMode mode, int level) {
    requireKnownMode_(mode);
    TARVO_LOG(3) << "Entered for " << fullTag();
    resetErrors();
    setup_of();
    if (!connected_) return;
    if (mode < simultaneous) {
        evaluate_(level);
        for (Stream* out : outletstreams_)
            out->go(mode, level);
        finish_();
    } else {
        calculateResidualsLocal();
    }
    countCalculation();
    TARVO_LOG(3) << "Done";
}
