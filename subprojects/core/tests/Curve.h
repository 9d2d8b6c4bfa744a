#ifndef TARVO_CORE_TESTS_CURVE_H
#define TARVO_CORE_TESTS_CURVE_H

#include <tarvo/core/Model.h>

// A model of the study tests: y = a x, an error for x inside the band (low, high), and in `seen` the value
// of y that the calculation started from, which tells from which state a round began.
class Curve : public Model {
public:
    Curve(const Tarvo::Persistency::Defaults& d, uint32_t id, Persistency* p, Persistent* parent, Persistent* root)
        : Model(d, id, p, parent, root) {
        for (Quantity* q : {&x, &a, &y, &seen, &low, &high}) addVariable(*q);
        addVariable(NITER);
    }
    Tarvo::Utility::Category category() const override { return Tarvo::Utility::Category::unit; }
    void calculate(int) override {
        ++calculations;
        seen = y;
        y = a * x;
        NITER.value() = 2;
        if (x > low && x < high) reportError("inside the band");
    }
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }

    Quantity x{"x", "Setting", "Pa", this, 1.0};
    Quantity a{"a", "Factor", "", this, 1.0};
    Quantity y{"y", "Result", "Pa", this, 0.0};
    Quantity seen{"seen", "Result at the start of the calculation", "Pa", this, 0.0};
    Quantity low{"low", "Lower end of the band of failure", "Pa", this, 1e300};
    Quantity high{"high", "Upper end of the band of failure", "Pa", this, 1e300};
    Integer NITER{"NITER", "Number of iterations", 0, this};
    int calculations = 0;
};

#endif
