#include <tarvo/components/ListComponents.h>
#include <tarvo/models/Test.h>
#include <tarvo/utility/Log.h>

#include <limits>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;

void setInput(Value& q, const Value& value) {
    q = value;
    q.setInput();
}
} // namespace

Test::Test(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root) {
    type = retrieveString(defaults, id, persistency, "typeT", "Membrane12Rtsc");
    addVariable(type);
    addComponentVariables(recovery, "recovery", "recovery", "", 0.0);
    addComponentVariables(purity, "purity", "purity", "", 0.0);
    if (persistency) return; // the units and streams come from the store
    TARVO_LOG(3) << "Define unit operations";
    // The options of the test bed reach its module: "stages" sets those of a multi-stage one.
    addUnit(type.value(), Defaults(defaults, "GM", "Gas membrane unit"));
    TARVO_LOG(3) << "Define stream objects and connect";
    addStream("StreamVapor", Defaults("FEED", "Membrane feed"), "source", "out", "GM", "feed");
    addStream("StreamVapor", Defaults("PERMEATE", "Permeate from membrane"), "GM", "permeate", "sink", "in");
    addStream("StreamVapor", Defaults("RETENTATE", "Retentate from membrane"), "GM", "retentate", "sink", "in");
}

void Test::setup() {
    TARVO_LOG(3) << "Calling FlowSheet::setup to initialize any embedded FlowSheet";
    FlowSheet::setup();
    TARVO_LOG(3) << "Setting input variables";
    const double permeances[] = {100.0, 3.3333333333333335, 150.0, 2.0};
    for (int i = 0; i < 4; ++i) setInput(Q("GM.permeance", i), Value(permeances[i], "GPU"));
    setInput(Q("GM.Ppermeate"), Value(1.2, "bar"));
    setInput(Q("GM.A"), Value(20.0, "m2"));
    setInput(Q("GM.deltaPretentate"), Value(0.5, "bar"));
    TARVO_LOG(3) << "Setting output variables";
    setInput(Q("FEED.P"), Value(6.5, "bar"));
    setInput(Q("FEED.T"), Value(333.15, "K"));
    S("FEED.flowoption") = "Nx";
    setInput(Q("FEED:Tphase.ndot"), Value(0.001, "kmol/s"));
    const std::pair<const char*, double> feed[] = {{"CH4", 0.6}, {"CO2", 0.34}, {"H2O", 0.058}, {"N2", 0.001},
                                                   {"O2", 0.001}};
    for (const auto& [component, x] : feed) setInput(Q("FEED:Tphase.x", component), Value(x));
}

void Test::makeUserEquations(std::list<Assignment*>::iterator& it) {
    // A multi-stage module equates its stages' cuts itself.
    if (!dynamic_cast<Object&>(child("GM")).hasQ("stageCutEst")) return;
    makeAssignment(it, Q("GM.stageCutEst"), Q("GM.stageCut"), "Q(\"GM.stageCut\")",
                   "Equate calculated stage cut with its estimate", 0, Tarvo::Utility::ScalingMode::noscaling, 0.0, 1.0,
                   Value(1.0));
}

void Test::post(SolutionMode, int) {
    TARVO_LOG(3) << "Entered for " << tag();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        recovery[i] = Q("RETENTATE:Tphase.ndotcomps", i) / Q("FEED:Tphase.ndotcomps", i);
        purity[i] = Q("RETENTATE:Tphase.x", i);
    }
    checkPurity(*this, purity);
}

void checkPurity(Model& model, const std::vector<Quantity>& purity) {
    const double epsilon = std::numeric_limits<double>::epsilon();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (purity[i].toDouble() < -epsilon) model.reportError("negative purity for component " + components[i]->name);
        if (purity[i].toDouble() > 1 + epsilon)
            model.reportError("purity larger than one for component " + components[i]->name);
    }
}
