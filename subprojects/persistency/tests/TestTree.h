#ifndef TARVO_PERSISTENCY_TESTS_TESTTREE_H
#define TARVO_PERSISTENCY_TESTS_TESTTREE_H

#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/persistency/Object.h>

// A small model of the test suite: a plant of stages, each with items of every kind.
class Stage : public Object {
public:
    Stage(const Tarvo::Persistency::Defaults& d, uint32_t id, Persistency* p, Persistent* parent, Persistent* root)
        : Object(d, id, p, parent, root) {
        for (Quantity* q : {&P, &T, &ndot, &scalarA11}) addVariable(*q);
        addVariable(x);
        addVariable(K);
        addVariable(n);
        addVariable(stages);
        addVariable(name);
        addVariable(labels);
    }
    Quantity P{"P", "Pressure", "bar", this, 1.0};
    Quantity T{"T", "Temperature", "K", this, 300.0};
    Quantity ndot{"ndot", "Molar flow", "kmol/h", this, 10.0};
    Quantity scalarA11{"A[1][1]", "A scalar with an indexed tag", "", this, 11.0};
    QuantityVector x{"x", "Molar fractions", 3, Value(0.1), this};
    QuantityMatrix K{"A", "Coefficients", 2, 3, Value(0.0), this};
    Integer n{"n", "Number of trays", 4, this};
    IntegerVector stages{"stages", "Stage numbers", 2, 7, this};
    String name{"name", "Name", "first", this};
    StringVector labels{"labels", "Labels", 2, "l", this};
};

// A stage that holds more stages: "S01" with "Tphase" below it.
class Section : public Stage {
public:
    Section(const Tarvo::Persistency::Defaults& d, uint32_t id, Persistency* p, Persistent* parent, Persistent* root)
        : Stage(d, id, p, parent, root) {
        if (p) return; // a rebuilt section has its children from the store
        addChild("Stage", Tarvo::Persistency::Defaults("Tphase", "Phase of the section"));
    }
};

// The root: "COND" and "S01[2]" stages, and the "S01" section.
class Plant : public Stage {
public:
    Plant(const Tarvo::Persistency::Defaults& d, uint32_t id, Persistency* p, Persistent* parent, Persistent* root)
        : Stage(d, id, p, parent, root) {
        if (p) return;
        addChild("Stage", Tarvo::Persistency::Defaults("COND", "Condenser"));
        addChild("Section", Tarvo::Persistency::Defaults("S01", "Section"));
        addChild("Stage", Tarvo::Persistency::Defaults("S01[2]", "Literally indexed"));
    }
};

inline void registerTestTree() {
    if (NodeFactory::registered("Plant")) return;
    NodeFactory::registerType<Stage>("Stage", "Test stage", "unit", false, {}, {}, {}, "", 1, 1);
    NodeFactory::registerType<Section>("Section", "Test section", "flowsheet", false, {}, {}, {}, "", 1, 1);
    NodeFactory::registerType<Plant>("Plant", "Test plant", "flowsheet", true, {}, {}, {}, "", 1, 1);
}

inline Plant* newPlant() {
    registerTestTree();
    return dynamic_cast<Plant*>(NodeFactory::create("Plant", {"plant", "A test plant"}, 0, nullptr, nullptr, nullptr));
}

#endif
