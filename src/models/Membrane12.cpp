#include <tarvo/components/ListComponents.h>
#include <tarvo/models/Membrane12.h>
#include <tarvo/phases/PhaseMassMolar.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/PressureDrop.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;

Defaults withTwoOutlets(const Defaults& defaults) {
    Defaults d(defaults, defaults.tag(), defaults.description());
    d.setInteger("nOutlets", 2);
    return d;
}
} // namespace

Membrane12::Membrane12(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                       Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      Separator(withTwoOutlets(defaults), id, persistency, parent, root) {
    for (Quantity* q : {&Ppermeate, &deltaPretentate, &A, &stageCutEst, &Pretentate, &stageCut, &delta})
        addVariable(*q);
    addComponentVariables(permeance, "permeance", "Permeance for each component", "GPU", 1.0);
    addComponentVariables(permeationFactor, "permeationFactor", "Permeation factor for each component", "", 1.0);
    for (Quantity* q : {&Ppermeate, &deltaPretentate, &A, &stageCutEst}) q->setInput();
    for (Quantity& q : permeance) q.setInput();
    for (Quantity* q : {&stageCutEst, &Pretentate, &stageCut, &delta}) q->setOutput();
    for (Quantity& q : permeationFactor) q.setOutput();
    beta = 0.99;
    for (Quantity& q : outSplit[0]) q.setOutput();
    outSplitTotal[0].setOutput();
    registerSynonym("feed", "in1");
    registerSynonym("permeate", "out1");
    registerSynonym("retentate", "out2");
}

void Membrane12::preCalculate_() {
    collectStreams_();
    Value flow(0.0, "kmol/s");
    Value weightedT = flow * Value(0.0, "K");
    Value inP(0.0, "Pa");
    bool first = true;
    int count = 0;
    const Stream* single = nullptr;
    for (const Stream* in : inletstreams_) {
        if (!in) continue;
        const Value& n = in->Tphase->totalFlow();
        flow += n;
        weightedT += in->T * n;
        if (first || in->P < inP) inP = in->P;
        first = false;
        single = in;
        ++count;
    }
    // One feed gives its own temperature: the mean of one would add the derivatives of its flow, zeros that
    // pile up along a chain of stages.
    if (flow.toDouble() == 0.0)
        T = Value(298.15, "K");
    else if (count == 1)
        T = single->T;
    else
        T = weightedT / flow;
    Value vdot(1.0, "m3/s");
    pressureDrop(this, "D", deltaPretentate, inP, beta, inP, Pretentate, flowcoefficient, vdot, "Membrane12::go");
    delta = (inP - deltaPretentate / 2.0) / Ppermeate;
    deltaPstream[0] = inP - Ppermeate;
    deltaPstream[1] = deltaPretentate;
    option.value() = "S";
    for (int i = 0; i < NCOMPONENTS; ++i) {
        permeationFactor[i] = permeance[i] * A * Ppermeate / flow;
        outSplit[0][i] = permeateSplit(permeationFactor[i], delta, stageCutEst);
    }
}

void Membrane12::postCalculate_() {
    if (inletstreams_.empty() || !inletstreams_[0]) return;
    const auto& feed = dynamic_cast<const Phase::MassMolar&>(*inletstreams_[0]->Tphase);
    stageCut.clear();
    for (int i = 0; i < NCOMPONENTS; ++i) stageCut += feed.x[i] * outSplit[0][i];
}

void Membrane12::go(SolutionMode mode, int level) {
    // A simultaneous step reaches calculateResidualsLocal, which works out the split and the stage cut.
    const bool sequentialStep = mode < simultaneous;
    if (sequentialStep) preCalculate_();
    Separator::go(mode, level);
    if (sequentialStep) postCalculate_();
    countCalculation();
}

int Membrane12::calculateResidualsLocal() {
    TARVO_LOG(3) << "stageCutEst = " << stageCutEst.toDouble() << " stageCut = " << stageCut.toDouble();
    // A simultaneous solve reaches the unit here and not through go: the splits must follow the estimate,
    // and the stage cut the splits, for the flowsheet's equation on the two to have a slope.
    preCalculate_();
    const int n = Separator::calculateResidualsLocal();
    postCalculate_();
    return n;
}

Value Membrane12Rtsc::permeateSplit(const Value& f, const Value& delta, const Value& theta) const {
    return delta / (1.0 / theta + 1.0 / f);
}

Value Membrane12Cstr::permeateSplit(const Value& f, const Value& delta, const Value& theta) const {
    return 1.0 / (1.0 + (1.0 - theta) / delta * (1.0 / theta + 1.0 / f));
}
