#include <tarvo/models/TwoStepCascade.h>

using Tarvo::Persistency::Defaults;

TwoStepCascade::TwoStepCascade(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                               Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      ReferenceFlowSheet(defaults, id, persistency, parent, root) {
    for (Quantity* q : {&A, &areaRatio, &alfa}) addVariable(*q);
}

void TwoStepCascade::setModule(const std::string& module, const Value& area) {
    setInput(Q(module + ".permeance", 0), Value(100.0, "GPU"));              // CO2
    setInput(Q(module + ".permeance", 1), Value(2.857142857142857, "GPU")); // CH4: 100 GPU over a selectivity of 35
    setInput(Q(module + ".A"), area);
}

void TwoStepCascade::setTrain(const Value& P) {
    setCompressor("COMPR", P, 0.8, 0.9, 1.0);
    setInput(Q("COMPR.T"), Value(313.15, "K"));
}

void TwoStepCascade::makeUserEquations(std::list<Assignment*>::iterator& it) {
    designEquation(it, Q("GMA.A"), A / (one + areaRatio), "A / (One + areaRatio)", "Area of module A");
    designEquation(it, Q("GMB.A"), areaRatio * A / (one + areaRatio), "areaRatio * A / (One + areaRatio)",
                   "Area of module B");
    designEquation(it, Q("GMA.permeance", 1), Q("GMA.permeance", 0) / alfa, "Q(\"GMA.permeance\", 0) / alfa",
                   "Methane selectivity for module A");
    designEquation(it, Q("GMB.permeance", 1), Q("GMB.permeance", 0) / alfa, "Q(\"GMB.permeance\", 0) / alfa",
                   "Methane selectivity for module B");
}
