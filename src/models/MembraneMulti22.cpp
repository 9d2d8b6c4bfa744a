#include <tarvo/components/ListComponents.h>
#include <tarvo/models/MembraneMulti22.h>
#include <tarvo/models/StageDesignResults.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/Log.h>

#include <cassert>
#include <climits>
#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
// The passes of a counter-current chain before Newton's method closes its permeate loops. A pass carries the
// permeate back by one stage: in the flue-gas plant with sweep, 10 stages gain some 9% a pass and need up to
// 200 at each pass of the plant. A few passes bring a new chain's stages near their states, from which
// Newton's method converges: there, with none it failed from the seed, and 3, 10 or 20 took longer than 5.
constexpr int leadingPasses = 5;
} // namespace

MembraneMulti22::MembraneMulti22(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                                 Persistent* root, const std::string& stageType, bool counterflow)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root), counterflow_(counterflow) {
    for (Quantity* q : {&A, &deltaPretentate, &deltaPpermeate, &stageCut}) addVariable(*q);
    for (Quantity* q : {&A, &deltaPretentate, &deltaPpermeate}) q->setInput();
    stageCut.setOutput();
    // At least one stage: the bounds exclude.
    stages = retrieveInteger(defaults, id, persistency, "stages", 0, INT_MAX, 10);
    addVariable(stages);
    addComponentVariables(permeance, "permeance", "Permeance for each component", "GPU", 1.0);
    addComponentVariables(outSplit, "outSplit", "component split fraction to permeate", "", 1.0);
    for (Quantity& q : permeance) q.setInput();
    for (Quantity& q : outSplit) q.setOutput();
    registerSynonym("retein", "in1");
    registerSynonym("permin", "in2");
    registerSynonym("reteout", "out1");
    registerSynonym("permout", "out2");
    // From the store the stages and streams come back with the flowsheet; only a new one builds them.
    if (!persistency) build_(stageType);
    // Connections to the ports of the flowsheet around this one are not stored.
    setInputConnection("FEED", "in1");
    setInputConnection("PERMEATESWEEP", "in2");
    setOutputConnection("RETENTATE" + std::to_string(stages.value()), "out1");
    setOutputConnection(permeateProduct_(), "out2");
}

void MembraneMulti22::build_(const std::string& stageType) {
    const int n = stages.value();
    for (int i = 1; i <= n; ++i) addUnit(stageType, Defaults(stagename(i), "Gas membrane unit"));
    for (int i = 1; i < n; ++i)
        addStream("StreamVapor", Defaults("RETENTATE" + std::to_string(i), "Retentate from membrane"), stagename(i),
                  "reteout", stagename(i + 1), "retein");
    // Co-current, stage i hands its permeate to stage i+1; counter-current, stage i+1 hands it to stage i.
    for (int i = 1; i < n; ++i) {
        const int from = counterflow_ ? i + 1 : i, to = counterflow_ ? i : i + 1;
        addStream("StreamVapor", Defaults("PERMEATE" + std::to_string(from), "Permeate from membrane"),
                  stagename(from), "permout", stagename(to), "permin");
    }
    addStream("StreamVapor", Defaults("FEED", "Membrane main retentate feed"), "source", "out", stagename(1),
              "retein");
    addStream("StreamVapor", Defaults("PERMEATESWEEP", "Membrane permate sweep feed"), "source", "out",
              stagename(counterflow_ ? n : 1), "permin");
    addStream("StreamVapor", Defaults("RETENTATE" + std::to_string(n), "Retentate from membrane"), stagename(n),
              "reteout", "sink", "in");
    addStream("StreamVapor", Defaults(permeateProduct_(), "Permeate from membrane"), stagename(counterflow_ ? 1 : n),
              "permout", "sink", "in");
}

std::string MembraneMulti22::stagename(int i) const {
    assert(i >= 1 && "i>=1");
    assert(i <= stages.value() && "i<=stages.value()");
    return "GM" + std::to_string(i);
}

std::string MembraneMulti22::permeateProduct_() const {
    return "PERMEATE" + std::to_string(counterflow_ ? 1 : stages.value());
}

bool MembraneMulti22::estimated_() {
    return dynamic_cast<Object&>(child(stagename(1))).hasQ("stageCutEst");
}

int MembraneMulti22::passesBeforeNewton() const {
    return counterflow_ ? leadingPasses : 0;
}

void MembraneMulti22::setup() {
    FlowSheet::setup();
    for (int i = 1; i <= stages.value(); ++i) markStageDesignAsResults(*this, stagename(i), {"deltaPretentate", "deltaPpermeate", "A"});
    // Every permeate that runs against the retentate closes a loop: the cuts open them, and being stored with
    // the case they come back with it.
    if (counterflow_)
        for (int i = 2; i <= stages.value(); ++i) addCut("PERMEATE" + std::to_string(i));
}

void MembraneMulti22::pre(SolutionMode, int) {
    const int n = stages.value();
    if (pristine() && estimated_())
        for (int i = 1; i <= n; ++i) Q(stagename(i) + ".stageCutEst") = Value(1.0 - std::pow(0.5, 1.0 / n));
    if (pristine() && counterflow_) {
        TARVO_LOG(3) << "Initializing streams to be cut";
        const Stream& sweep = *my_cast<Stream*>(&child("PERMEATESWEEP"), "MembraneMulti22");
        for (int i = 2; i <= n; ++i) {
            Stream& seed = *my_cast<Stream*>(&child("PERMEATE" + std::to_string(i) + "bis"), "MembraneMulti22");
            copyStream(seed, sweep);
            seed.P -= static_cast<double>(i - 1) * deltaPpermeate / static_cast<double>(n);
            // As a restored cut: the steps of its enthalpy move its temperature.
            seed.setFlash(enthalpyFlashMode(seed));
        }
    }
    for (Membrane22* stage : stageUnits_.of(*this)) {
        stage->deltaPretentate = deltaPretentate / static_cast<double>(n);
        stage->deltaPpermeate = deltaPpermeate / static_cast<double>(n);
        stage->A = A / static_cast<double>(n);
        for (int c = 0; c < NCOMPONENTS; ++c) stage->permeance[c] = permeance[c];
    }
}

void MembraneMulti22::makeUserEquations(std::list<Assignment*>::iterator& it) {
    if (!estimated_()) return; // theta of these stages depends on no estimate
    for (int i = 1; i <= stages.value(); ++i) {
        const std::string stage = stagename(i);
        makeAssignment(it, Q(stage + ".stageCutEst"), Q(stage + ".stageCut"), "Q(stagename(i).append(\".stageCut\"))",
                       "Equate calculated stage cut with its estimate for stage " + std::to_string(i), i,
                       Tarvo::Utility::ScalingMode::noscaling, 0.0, 1.0, Value(1.0));
    }
}

const Phase::MassMolar& MembraneMulti22::total_(const std::string& tag) {
    const Stream* stream = my_cast<Stream*>(&child(tag), "MembraneMulti22");
    return *my_cast<const Phase::MassMolar*>(stream->Tphase, "MembraneMulti22");
}

// Every pass ends here: the streams are taken once each rather than item by item through their tag paths.
void MembraneMulti22::post(SolutionMode, int) {
    const Phase::MassMolar &product = total_(permeateProduct_()), &feed = total_("FEED"),
                           &sweep = total_("PERMEATESWEEP");
    stageCut = product.ndot / (feed.ndot + sweep.ndot);
    for (int c = 0; c < NCOMPONENTS; ++c)
        outSplit[c] = product.ndotcomps[c] / (feed.ndotcomps[c] + sweep.ndotcomps[c]);
    countCalculation();
}
