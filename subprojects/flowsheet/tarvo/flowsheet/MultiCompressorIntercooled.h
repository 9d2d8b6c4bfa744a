#ifndef TARVO_FLOWSHEET_MULTICOMPRESSORINTERCOOLED_H
#define TARVO_FLOWSHEET_MULTICOMPRESSORINTERCOOLED_H

#include <tarvo/flowsheet/MultiStageOneTwo.h>

// A compression train of N CompressionStage's in line, from the pressure of its feed to the discharge
// pressure P, with the same compression ratio in every stage and every intercooler at T. The compressed gas
// leaves at gasout (out1), the condensate of all coolers together at liqout (out2).
template <int N> class MultiCompressorIntercooled : public MultiStageOneTwo {
public:
    MultiCompressorIntercooled(const Tarvo::Persistency::Defaults& defaults, uint32_t id,
                               Persistency* persistency, Persistent* parent, Persistent* root);

    // Each stage's pressure and the settings common to all.
    void pre(SolutionMode mode, int level) override;
    // The power and the cooler duty of the whole train.
    void post(SolutionMode mode, int level) override;

    Quantity P{"P", "Discharge pressure", "Pa", this, 101325.0};
    Quantity cr{"cr", "Compression ratio", "", this, 1.0};
    Quantity T{"T", "Intercooler temperature", "K", this, 298.15};
    Quantity theta{"theta", "Isentropic yield of all stages", "", this, 1.0};
    Quantity etaM{"etaM", "Mechanical efficiency of all stages", "", this, 0.9};
    Quantity etaE{"etaE", "Electrical efficiency of all stages", "", this, 0.9};
    Quantity We{"We", "Total electrical power requirement", "W", this, 0.0};
    Quantity duty{"duty", "Sum of intercooler duties", "W", this, 0.0};
};

extern template class MultiCompressorIntercooled<1>;
extern template class MultiCompressorIntercooled<2>;
extern template class MultiCompressorIntercooled<3>;

#endif
