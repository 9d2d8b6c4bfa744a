#include <tarvo/components/ListComponents.h>
#include <tarvo/models/Membrane22.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/MultiReactionTransfer.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;

Defaults withOneTransfer(const Defaults& defaults) {
    Defaults d(defaults, defaults.tag(), defaults.description());
    d.setInteger("nStreams", 2);
    d.setInteger("nmultiReactions", 1);
    d.setString("embeddedTypemultiReactions[0]", "MultiReactionTransfer");
    return d;
}

// A side's share of a flow, 0 for a side without flow.
Value fraction(const Value& part, const Value& whole) {
    return whole.toDouble() > 0.0 ? part / whole : Value(0.0);
}
} // namespace

Membrane22::Membrane22(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                       Persistent* root, bool estimated)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      MultiExchanger(withOneTransfer(defaults), id, persistency, parent, root) {
    for (Quantity* q : {&deltaPretentate, &deltaPpermeate, &Tavg}) addVariable(*q);
    if (estimated) addVariable(stageCutEst);
    for (Quantity* q : {&stageCut, &delta, &N}) addVariable(*q);
    addComponentVariables(permeance, "permeance", "Permeance for each component", "GPU", 1.0);
    addComponentVariables(permeationFactor, "permeationFactor", "Permeation factor for each component", "", 1.0);
    addComponentVariables(lamb, "lamb", "average feed molar fraction", "", 1.0);
    for (Quantity* q : {&deltaPretentate, &deltaPpermeate, &stageCutEst}) q->setInput();
    for (Quantity& q : permeance) q.setInput();
    for (Quantity* q : {&Tavg, &stageCutEst, &stageCut, &delta, &N}) q->setOutput();
    for (auto* items : {&permeationFactor, &lamb})
        for (Quantity& q : *items) q.setOutput();
    // The solid between the sides is the membrane: it should carry next to no heat.
    for (Quantity& q : U) q = Value(0.01, "W/(m2*K)");
    // The material that crosses enters a side at the solid's temperature, so an outlet may end right at it,
    // where the logarithmic mean has no slope to follow; with next to no heat carried the plain mean does.
    MTDoption = "linear";
    for (Quantity& q : transfer_().theta) {
        q.unsetInput();
        q.setOutput();
    }
    registerSynonym("retein", "in1");
    registerSynonym("permin", "in2");
    registerSynonym("reteout", "out1");
    registerSynonym("permout", "out2");
}

MultiReactionTransfer& Membrane22::transfer_() const {
    return *my_cast<MultiReactionTransfer*>(multiReactions[0], "Membrane22");
}

void Membrane22::preCalculate_() {
    collectStreams_();
    if (inletstreams_.size() < 2 || !inletstreams_[0] || !inletstreams_[1]) return; // the exchanger reports it
    const Stream& feed = *inletstreams_[0];
    const Stream& sweep = *inletstreams_[1];
    deltaP[0] = deltaPretentate;
    deltaP[1] = deltaPpermeate;
    // The drops are bounded by the inlet pressures, as in any unit, not by the exchanger's default of nothing.
    deltaPMax[0] = feed.P;
    deltaPMax[1] = sweep.P;
    const Value pRetentate = feed.P - deltaPretentate / 2.0;
    const Value pPermeate = sweep.P - deltaPpermeate / 2.0;
    delta = pRetentate / pPermeate;
    const Value& n0 = feed.Tphase->totalFlow();
    const Value& n1 = sweep.Tphase->totalFlow();
    N = n0 + n1;
    Tavg = N.toDouble() == 0.0 ? Value(298.15, "K") : (feed.T * n0 + sweep.T * n1) / N;
    std::vector<Quantity>& theta = transfer_().theta;
    // Without any flow there is nothing to share out: the factors and fractions are 0, not a division by 0.
    const bool flowing = N.toDouble() > 0.0;
    for (int c = 0; c < NCOMPONENTS; ++c) {
        const Value& n0c = feed.Tphase->flow(c);
        const Value& n1c = sweep.Tphase->flow(c);
        permeationFactor[c] = flowing ? permeance[c] * A * pPermeate / N : Value(0.0);
        lamb[c] = flowing ? (n0c + n1c) / N : Value(0.0);
        // A component that enters on neither side moves nothing, whatever its share.
        theta[c] = (n0c + n1c).toDouble() > 0.0
                       ? permeateShare(c, Feeds{n0c, n1c, fraction(n0c, n0), fraction(n1c, n1)})
                       : Value(0.5);
    }
}

void Membrane22::postCalculate_() {
    const std::vector<Quantity>& theta = transfer_().theta;
    stageCut.clear();
    for (int c = 0; c < NCOMPONENTS; ++c) stageCut += lamb[c] * theta[c];
}

// The exchanger counts the calculation. A simultaneous solve reaches the module here too, through the
// exchanger's calculateResidualsLocal, so theta follows its unknowns.
void Membrane22::go(SolutionMode mode, int level) {
    preCalculate_();
    MultiExchanger::go(mode, level);
    postCalculate_();
}

Value Membrane22Rtsc::permeateShare(int c, const Feeds& f) const {
    const Value flux = N * permeationFactor[c] * (delta * f.x0 - f.x1);
    return (f.n1 + flux) / (f.n0 + f.n1);
}

Value Membrane22Linear::permeateShare(int c, const Feeds& f) const {
    const Value& pf = permeationFactor[c];
    const Value& l = lamb[c];
    const Value& cut = stageCutEst;
    // n1 times x1 of the balance is the sweep's flow of the component.
    return (l + (1.0 - cut) * f.x0 - (1.0 - cut) * f.x1 / delta + 2.0 * f.n1 * (1.0 - cut) / (N * pf * delta)) /
           (l * (1.0 + ((1.0 - cut) / delta) * (2.0 / pf + 1.0 / cut)));
}

int Membrane22Linear::calculateResidualsLocal() {
    TARVO_LOG(3) << "stageCutEst = " << stageCutEst.toDouble() << " stageCut = " << stageCut.toDouble();
    return Membrane22::calculateResidualsLocal();
}
