#include <tarvo/components/ListComponents.h>
#include <tarvo/models/Inputs.h>
#include <tarvo/models/ReferenceFlowSheet.h>
#include <tarvo/models/Test.h>
#include <tarvo/utility/Log.h>

#include <limits>

using Tarvo::Persistency::Defaults;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Test::Test(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent, Persistent* root)
    : Test(defaults, id, persistency, parent, root, Feeds::one) {}

Test::Test(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent, Persistent* root,
           Feeds feeds)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root), feeds_(feeds) {
    const bool sweep = feeds_ == Feeds::two;
    type = retrieveString(defaults, id, persistency, "typeT", sweep ? "Membrane22Rtsc" : "Membrane12Rtsc");
    addVariable(type);
    addComponentVariables(recovery, "recovery", "recovery", "", 0.0);
    addComponentVariables(purity, "purity", "purity", "", 0.0);
    if (persistency) return; // the units and streams come from the store
    TARVO_LOG(3) << "Define unit operations";
    // The options of the test bed reach its module: "stages" sets those of a multi-stage one.
    addUnit(type.value(), Defaults(defaults, "GM", "Gas membrane unit"));
    TARVO_LOG(3) << "Define stream objects and connect";
    if (sweep) {
        addStream("StreamVapor", Defaults("FEED", "Membrane main retentate feed"), "source", "out", "GM", "retein");
        addStream("StreamVapor", Defaults("PERMEATESWEEP", "Membrane permate sweep feed"), "source", "out", "GM",
                  "permin");
    } else {
        addStream("StreamVapor", Defaults("FEED", "Membrane feed"), "source", "out", "GM", "feed");
    }
    // Both kinds of module name their products alike: the permeate is out1 of one and out2 of the other.
    addStream("StreamVapor", Defaults("PERMEATE", "Permeate from membrane"), "GM", sweep ? "permout" : "permeate",
              "sink", "in");
    addStream("StreamVapor", Defaults("RETENTATE", "Retentate from membrane"), "GM", sweep ? "reteout" : "retentate",
              "sink", "in");
}

int Test2::sequential() const {
    return passesOfNestedSheets(*this, 5); // the fewest passes of any flowsheet
}

bool Test2::simultaneousSupported() const {
    return nestedSheetsSupportSimultaneous(*this);
}

void Test::setup() {
    TARVO_LOG(3) << "Calling FlowSheet::setup to initialize any embedded FlowSheet";
    FlowSheet::setup();
    TARVO_LOG(3) << "Setting input variables";
    const double permeances[] = {100.0, 3.3333333333333335, 150.0, 2.0};
    for (int i = 0; i < 4; ++i) setInput(Q("GM.permeance", i), Value(permeances[i], "GPU"));
    // The permeate side of a module with a sweep is at the sweep's pressure.
    const bool sweep = feeds_ == Feeds::two;
    if (!sweep) setInput(Q("GM.Ppermeate"), Value(1.2, "bar"));
    setInput(Q("GM.A"), Value(20.0, "m2"));
    setInput(Q("GM.deltaPretentate"), Value(0.5, "bar"));
    TARVO_LOG(3) << "Setting output variables";
    setFeed(*this, "FEED", Value(6.5, "bar"), Value(sweep ? 343.15 : 333.15, "K"), "Nx", Value(0.001, "kmol/s"),
            {{"CH4", 0.6}, {"CO2", 0.34}, {"H2O", 0.058}, {"N2", 0.001}, {"O2", 0.001}});
    if (sweep)
        setFeed(*this, "PERMEATESWEEP", Value(1.2, "bar"), Value(333.15, "K"), "Nx", Value(0.0001, "kmol/s"),
                {{"CO2", 1.0}});
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
    const bool sweep = feeds_ == Feeds::two;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const Value fed = sweep ? Q("FEED:Tphase.ndotcomps", i) + Q("PERMEATESWEEP:Tphase.ndotcomps", i)
                                : Q("FEED:Tphase.ndotcomps", i);
        recovery[i] = Q("RETENTATE:Tphase.ndotcomps", i) / fed;
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
