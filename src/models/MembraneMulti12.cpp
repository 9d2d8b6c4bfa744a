#include <tarvo/components/ListComponents.h>
#include <tarvo/models/MembraneMulti12.h>
#include <tarvo/models/StageDesignResults.h>

#include <cassert>
#include <climits>
#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
// The passes that a chain gets for each of its stages to converge their stage cut estimates: a module of a
// large area, whose stage cuts are near their ends, takes some 20 passes for 10 stages.
constexpr int passesPerStage = 10;
} // namespace

MembraneMulti12::MembraneMulti12(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                                 Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root) {
    typeV = retrieveString(defaults, id, persistency, "typeV", "Membrane12Rtsc");
    addVariable(typeV);
    for (Quantity* q : {&A, &deltaPretentate, &Ppermeate, &stageCut}) addVariable(*q);
    for (Quantity* q : {&A, &deltaPretentate, &Ppermeate}) q->setInput();
    stageCut.setOutput();
    // At least one stage: the bounds exclude.
    stages = retrieveInteger(defaults, id, persistency, "stages", 0, INT_MAX, 10);
    addVariable(stages);
    addComponentVariables(outSplit, "outSplit", "component split fraction to permeate", "", 1.0);
    addComponentVariables(permeance, "permeance", "Permeance for each component", "GPU", 1.0);
    for (Quantity& q : outSplit) q.setOutput();
    for (Quantity& q : permeance) q.setInput();
    registerSynonym("feed", "in1");
    registerSynonym("permeate", "out1");
    registerSynonym("retentate", "out2");
    // From the store the stages and streams come back with the flowsheet; only a new one builds them.
    if (!persistency) build_();
    // Connections to the ports of the flowsheet around this one are not stored.
    setInputConnection("FEED", "in1");
    setOutputConnection("PERMEATE", "out1");
    setOutputConnection("RETENTATE", "out2");
}

void MembraneMulti12::build_() {
    const int n = stages.value();
    for (int i = 1; i <= n; ++i) addUnit(typeV.value(), Defaults(stagename(i), "Gas membrane unit"));
    addUnit("Mixer", Defaults("MIX", "Mix permeates"));
    for (int i = 1; i < n; ++i) {
        const std::string k = std::to_string(i);
        addStream("StreamVapor", Defaults("PERMEATE" + k, "Permeate from membrane"), stagename(i), "permeate", "MIX",
                  "in");
        addStream("StreamVapor", Defaults("RETENTATE" + k, "Retentate from membrane"), stagename(i), "retentate",
                  stagename(i + 1), "feed");
    }
    addStream("StreamVapor", Defaults("PERMEATE" + std::to_string(n), "Permeate from membrane"), stagename(n),
              "permeate", "MIX", "in");
    addStream("StreamVapor", Defaults("FEED", "Membrane feed"), "source", "out", stagename(1), "feed");
    addStream("StreamVapor", Defaults("PERMEATE", "Permeate from membrane"), "MIX", "out", "sink", "in");
    addStream("StreamVapor", Defaults("RETENTATE", "Retentate from membrane"), stagename(n), "retentate", "sink",
              "in");
}

std::string MembraneMulti12::stagename(int i) const {
    assert(i >= 1 && "i>=1");
    assert(i <= stages.value() && "i<=stages.value()");
    return "GM" + std::to_string(i);
}

void MembraneMulti12::setup() {
    FlowSheet::setup();
    for (int i = 1; i <= stages.value(); ++i) markStageDesignAsResults(*this, stagename(i), {"deltaPretentate", "Ppermeate", "A"});
}

void MembraneMulti12::pre(SolutionMode, int) {
    const int n = stages.value();
    if (pristine()) {
        // The overall cut as the product of equal stage cuts.
        for (int i = 1; i <= n; ++i)
            if (dynamic_cast<Object&>(child(stagename(i))).hasQ("stageCutEst"))
                Q(stagename(i) + ".stageCutEst") = pow(stageCut, 1.0 / n);
    }
    if (n < 1) return;
    for (Membrane12* stage : stageUnits_.of(*this)) {
        stage->deltaPretentate = deltaPretentate / static_cast<double>(n);
        stage->A = A / static_cast<double>(n);
        stage->Ppermeate = Ppermeate;
        for (int c = 0; c < NCOMPONENTS; ++c) stage->permeance[c] = permeance[c];
    }
}

void MembraneMulti12::makeUserEquations(std::list<Assignment*>::iterator& it) {
    for (int i = 1; i <= stages.value(); ++i) {
        const std::string stage = stagename(i);
        makeAssignment(it, Q(stage + ".stageCutEst"), Q(stage + ".stageCut"), "Q(stagename(i).append(\".stageCut\"))",
                       "Equate calculated stage cut with its estimate for stage " + std::to_string(i), i,
                       Tarvo::Utility::ScalingMode::noscaling, 0.0, 1.0, Value(1.0));
    }
}

void MembraneMulti12::post(SolutionMode, int) {
    stageCut = Q("PERMEATE:Tphase.ndot") / Q("FEED:Tphase.ndot");
    for (int c = 0; c < NCOMPONENTS; ++c)
        outSplit[c] = Q("PERMEATE:Tphase.ndotcomps", c) / Q("FEED:Tphase.ndotcomps", c);
    countCalculation();
}

int MembraneMulti12::sequential() const {
    return passesPerStage * stages.value();
}
