#include <tarvo/flowsheet/MultiCompressorIntercooled.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/utility/Log.h>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;

// The line of stages that the train is made of.
Defaults compressionLine(const Defaults& defaults, int stages) {
    Defaults d(defaults, defaults.tag(), defaults.description());
    d.setInteger("nStage", stages);
    for (const auto& [option, type] : {std::pair<const char*, const char*>{"typeT", "CompressionStage"},
                                       {"typeU", "StreamVapor"},
                                       {"typeV", "StreamLiquid"}})
        if (!defaults.hasString(option)) d.setString(option, type);
    return d;
}
} // namespace

template <int N>
MultiCompressorIntercooled<N>::MultiCompressorIntercooled(const Defaults& defaults, uint32_t id,
                                                          Persistency* persistency, Persistent* parent,
                                                          Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      MultiStageOneTwo(compressionLine(defaults, N), id, persistency, parent, root) {
    for (Quantity* q : {&P, &cr, &T, &theta, &etaM, &etaE, &We, &duty})
        this->addVariable(*q);
    for (Quantity* q : {&cr, &We, &duty})
        q->setOutput();
    this->registerSynonym("gasout", "out1");
    this->registerSynonym("liqout", "out2");
}

template <int N> void MultiCompressorIntercooled<N>::pre(SolutionMode, int) {
    const Value& Pin = dynamic_cast<Stream&>(this->child("FEED")).P;
    TARVO_LOG(3) << "P in = " << Pin.toDouble() << " P = " << P.toDouble();
    cr = P / Pin;
    const Value cri = pow(cr, 1.0 / N);
    TARVO_LOG(3) << "cr  = " << cr.toDouble() << " cri = " << cri.toDouble();
    for (int k = 0; k < N; ++k) {
        Object& stage = this->stage(k);
        // The stage holds its cooler at the pressure of its compressor.
        stage.Q("C.P") = Pin * pow(cri, k + 1.0);
        stage.S("C.option") = "P";
        stage.Q("C.theta") = theta;
        stage.Q("C.etaM") = etaM;
        stage.Q("C.etaE") = etaE;
        stage.Q("COOL.T") = T;
    }
}

template <int N> void MultiCompressorIntercooled<N>::post(SolutionMode mode, int level) {
    MultiStageOneTwo::post(mode, level);
    We.clear();
    duty.clear();
    for (int k = 0; k < N; ++k) {
        Object& stage = this->stage(k);
        We += stage.Q("C.We");
        duty += stage.Q("COOL.duty");
    }
}

template class MultiCompressorIntercooled<1>;
template class MultiCompressorIntercooled<2>;
template class MultiCompressorIntercooled<3>;
