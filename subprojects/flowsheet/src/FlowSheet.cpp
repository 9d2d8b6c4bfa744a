#include <tarvo/components/ListComponents.h>
#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/flowsheet/Layout.h>
#include <tarvo/flowsheet/SequentialConvergence.h>
#include <tarvo/flowsheet/SimultaneousConvergence.h>
#include <tarvo/flowsheet/TaskGraph.h>
#include <tarvo/flowsheet/Terminator.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <vector>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::FlashMode;
using Tarvo::Utility::ScalingMode;

namespace {
constexpr int verbosityFile = -1;
const Value noMass(0.0, "kg/s");
const Value noEnergy(0.0, "W");
// The sequential passes that any flowsheet may take, whatever fewer its sequential() asks for.
constexpr int leastPasses = 5;

// The number behind the prefix of a port ("in3" gives 2), -1 for anything else.
int portIndex(const std::string& port, const std::string& prefix) {
    if (port.compare(0, prefix.size(), prefix) != 0 || port.size() == prefix.size()) return -1;
    char* end = nullptr;
    const long number = std::strtol(port.c_str() + prefix.size(), &end, 10);
    return *end == '\0' && number > 0 ? static_cast<int>(number - 1) : -1;
}
} // namespace

// What a flowsheet keeps beside its items: the graph, the connections of its ports, its cuts and the two
// ways of converging them.
class FlowSheet::Private : public virtual Diagnostic {
public:
    // A cut: the tear copy in(), which starts at the source, and the stream out() that it stands for.
    struct Cut {
        Stream* in;
        Stream* out;
    };

    explicit Private(FlowSheet* q) : q_(q), sequential(*q), simultaneous(*q) {}

    // The graph of a flowsheet retrieved from the store, from the ends that its streams remember.
    void build();
    void addCut_(const std::string& in, const std::string& out);
    void removeCut_(const std::string& in, const std::string& out);

    FlowSheet* q_;
    TaskGraph graph;
    std::map<std::string, std::string> inputconnections_;
    std::map<std::string, std::string> outputconnections_;
    std::map<std::string, Cut> cuts; // by the tag of in()
    SequentialConvergence sequential;
    SimultaneousConvergence simultaneous;
};

namespace {
Stream& streamOf(const Node& sheet, const std::string& tag) {
    return *my_cast<Stream*>(&sheet.child(tag), "FlowSheet");
}

VertexBase& vertexOf(const Node& sheet, const std::string& tag) {
    return *my_cast<VertexBase*>(&sheet.child(tag), "FlowSheet");
}

Connectivity& unitOf(const Node& sheet, const std::string& tag) {
    return *my_cast<Connectivity*>(&sheet.child(tag), "FlowSheet");
}
} // namespace

void FlowSheet::Private::build() {
    TARVO_LOG(3) << "Restoring Vertexes";
    for (const auto& [tag, child] : q_->children()) {
        auto* vertex = dynamic_cast<VertexBase*>(child.get());
        if (!vertex) continue;
        TARVO_LOG(4) << "Restoring vertex " << tag << " of type " << child->type();
        // The counts of connections come back from the store, the connections themselves are made again.
        if (auto* unit = dynamic_cast<Connectivity*>(vertex)) unit->clearConnections();
        graph.addVertex(vertex);
    }
    TARVO_LOG(3) << "Connecting Edges";
    for (const auto& [tag, child] : q_->children()) {
        auto* edge = dynamic_cast<EdgeBase*>(child.get());
        if (!edge) continue;
        const std::string& from = edge->fromTAG.value();
        const std::string& to = edge->toTAG.value();
        std::string fromPort = edge->fromPort.value(), toPort = edge->toPort.value();
        if (from == "source") {
            TARVO_LOG(4) << "Setting as input stream " << tag;
            if (fromPort.find("out") == std::string::npos)
                throw ErrorConnectivity(TARVO_FUNCTION, q_->fullTag(), "the from port does not contain out");
        }
        if (to == "sink") {
            TARVO_LOG(4) << "Setting as output stream " << tag;
            if (toPort.find("in") == std::string::npos)
                throw ErrorConnectivity(TARVO_FUNCTION, q_->fullTag(), "the to port does not contain in");
        }
        vertexOf(*q_, from).attach(*edge, fromPort);
        vertexOf(*q_, to).attach(*edge, toPort);
        graph.addEdge(from, to, edge);
    }
    TARVO_LOG(3) << "build complete";
}

void FlowSheet::Private::addCut_(const std::string& in, const std::string& out) {
    Stream& copy = streamOf(*q_, in);
    Stream& cut = streamOf(*q_, out);
    cuts[in] = Cut{&copy, &cut};
    copy.cutsource = out;
    cut.cutdest = in;
}

void FlowSheet::Private::removeCut_(const std::string& in, const std::string& out) {
    assert(q_->at(out).S("cutdest") == in);
    assert(q_->at(in).S("cutsource") == out);
    cuts.erase(in);
    streamOf(*q_, in).cutsource = "";
    streamOf(*q_, out).cutdest = "";
}

// ---- construction and connections ------------------------------------------------------------------

FlowSheet::FlowSheet(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                     Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      ObjectiveNleAdFlowsheet("FlowSheet"), Connectivity(defaults, id, persistency, parent, root),
      d_(std::make_unique<Private>(this)) {
    addVariable(enableAssignment);
    addVariable(NITER);
    addVariable(seqTol);
    addVariable(seqErr);
    if (!persistency) {
        TARVO_LOG(3) << "Define dummy unit operations to get inlet and outlet streams to and from flowsheet";
        addUnit("Terminator", Defaults("source", "Source of all feed streams to the graph"));
        addUnit("Terminator", Defaults("sink", "Destination for all streams exiting the graph"));
    } else {
        TARVO_LOG(3) << "Build from persistent storage";
        d_->build();
    }
}

FlowSheet::~FlowSheet() = default;

bool FlowSheet::nested() const {
    return !isRoot() && dynamic_cast<const FlowSheet*>(parentNode()) != nullptr;
}

void FlowSheet::addUnit(const std::string& type, Defaults defaults) {
    TARVO_LOG(3) << "Making " << type << " " << defaults.tag();
    d_->graph.addVertex(my_cast<VertexBase*>(&addChild(type, defaults), TARVO_FUNCTION));
    TARVO_LOG(3) << "Done " << defaults.tag();
}

void FlowSheet::addStream(const std::string& type, Defaults defaults, const std::string& from,
                          const std::string& fromPort, const std::string& to, const std::string& toPort) {
    if (from == to) throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "can not attach to self");
    VertexBase& source = vertexOf(*this, from);
    VertexBase& destination = vertexOf(*this, to);
    // A unit's synonyms ("feed", "permeate") stand for its numbered ports, and are checked as those.
    std::string out = fromPort, in = toPort;
    source.translate(out);
    destination.translate(in);
    if (out.find("out") == std::string::npos)
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "the from port does not contain out");
    if (in.find("in") == std::string::npos)
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "the to port does not contain in");
    auto& edge = *my_cast<EdgeBase*>(&addChild(type, defaults), TARVO_FUNCTION);
    edge.fromTAG = from;
    edge.toTAG = to;
    // The numbered ports are stored, so that a retrieved flowsheet connects each stream where it was.
    source.attach(edge, out);
    destination.attach(edge, in);
    edge.fromPort = out;
    edge.toPort = in;
    d_->graph.addEdge(from, to, &edge);
    TARVO_LOG(3) << "Added " << edge.tag() << " from " << from << ":" << out << " to " << to << ":" << in;
    if (from == "source") TARVO_LOG(4) << "Setting as input stream";
    if (to == "sink") TARVO_LOG(4) << "Setting as output stream";
}

void FlowSheet::setInputConnection(const std::string& internalStream, const std::string& port) {
    TARVO_LOG(3) << "Connecting internal stream [" << internalStream << "] to external inlet port " << port;
    if (streamOf(*this, internalStream).fromTAG.value() != "source")
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(),
                                "stream " + internalStream + " is not coming from source");
    if (d_->inputconnections_.count(port))
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "port " + port + " already connected");
    inletIdFromPort(port);
    d_->inputconnections_[port] = internalStream;
}

void FlowSheet::setOutputConnection(const std::string& internalStream, const std::string& port) {
    TARVO_LOG(3) << "Connecting internal stream [" << internalStream << "] to external outlet port " << port;
    if (streamOf(*this, internalStream).toTAG.value() != "sink")
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(),
                                "stream " + internalStream + " is not going to sink");
    if (d_->outputconnections_.count(port))
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "port " + port + " already connected");
    outletIdFromPort(port);
    d_->outputconnections_[port] = internalStream;
}

int FlowSheet::inletIdFromPort(const std::string& port) const {
    if (port.compare(0, 2, "in") != 0)
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "port name is invalid");
    const int index = portIndex(port, "in");
    if (index < 0) throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "port id is invalid");
    return index;
}

int FlowSheet::outletIdFromPort(const std::string& port) const {
    if (port.compare(0, 3, "out") != 0)
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "port name is invalid");
    const int index = portIndex(port, "out");
    if (index < 0) throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "port id is invalid");
    return index;
}

const std::string& FlowSheet::inletTag(unsigned int index) const {
    if (index >= d_->inputconnections_.size())
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "index is out of range");
    const auto connection = d_->inputconnections_.find("in" + std::to_string(index + 1));
    assert(connection != d_->inputconnections_.end());
    return connection->second;
}

const std::string& FlowSheet::outletTag(unsigned int index) const {
    if (index >= d_->outputconnections_.size())
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "index is out of range");
    const auto connection = d_->outputconnections_.find("out" + std::to_string(index + 1));
    assert(connection != d_->outputconnections_.end());
    return connection->second;
}

int FlowSheet::inletConnection(const std::string& tag) const {
    for (const auto& [port, stream] : d_->inputconnections_)
        if (stream == tag) return inletIdFromPort(port);
    throw ErrorConnectivity(TARVO_FUNCTION, fullTag(),
                            "the supplied tag does not correspond to an inlet stream");
}

int FlowSheet::outletConnection(const std::string& tag) const {
    for (const auto& [port, stream] : d_->outputconnections_)
        if (stream == tag) return outletIdFromPort(port);
    throw ErrorConnectivity(TARVO_FUNCTION, fullTag(),
                            "the supplied tag does not correspond to an outlet stream");
}

void FlowSheet::printConnections() const {
    std::cout << "INPUT CONNECTIONS\n";
    for (const auto& [port, stream] : d_->inputconnections_)
        std::cout << "internal stream [" << stream << "] connected to external inlet port " << port << "\n";
    std::cout << "OUTPUT CONNECTIONS\n";
    for (const auto& [port, stream] : d_->outputconnections_)
        std::cout << "internal stream [" << stream << "] connected to external outlet port " << port << "\n";
    std::cout.flush();
}

// ---- cuts --------------------------------------------------------------------------------------------

void FlowSheet::addCut(const std::string& s) {
    Stream& cut = streamOf(*this, s);
    assert(cut.fromTAG.value() != "source");
    assert(cut.toTAG.value() != "sink");
    cut.unSetInput();
    const std::string bis = s + "bis";
    const std::string description = cut.description().empty() ? s + " cut" : cut.description();
    auto& copy = *my_cast<Stream*>(&addChild(cut.type(), Defaults(bis, description)), TARVO_FUNCTION);
    copyStream(copy, cut);
    const std::string from = cut.fromTAG.value(), to = cut.toTAG.value();
    copy.toTAG = to;
    copy.toPort = cut.toPort.value();
    copy.fromTAG = "source";

    TARVO_LOG(3) << "Adding edge source -> " << to;
    std::string port = "out";
    vertexOf(*this, "source").attach(copy, port);
    copy.fromPort = port;
    VertexBase& destination = vertexOf(*this, to);
    destination.detach(cut.toPort.value());
    port = cut.toPort.value();
    destination.attach(copy, port);
    d_->graph.addEdge("source", to, &copy);

    TARVO_LOG(3) << "Removing edge " << from << " -> " << to;
    d_->graph.removeEdge(s);
    cut.toTAG = "sink";
    port = "in";
    vertexOf(*this, "sink").attach(cut, port);
    cut.toPort = port;
    d_->graph.addEdge(from, "sink", &cut);
    d_->addCut_(bis, s);
    purgeAss(); // the assignments follow the cuts
}

void FlowSheet::removeCut(const std::string& s) {
    const std::string bis = s + "bis";
    Stream& cut = streamOf(*this, s);
    Stream& copy = streamOf(*this, bis);
    assert(cut.tag() == s);
    assert(copy.tag() == s + "bis");
    const std::string from = cut.fromTAG.value(), to = copy.toTAG.value();
    TARVO_LOG(3) << "Removing edge source -> " << to;
    d_->graph.removeEdge(bis);
    TARVO_LOG(3) << "Removing edge " << from << " -> sink";
    d_->graph.removeEdge(s);
    TARVO_LOG(4) << "Detaching port " << copy.fromPort.value() << " of source";
    vertexOf(*this, "source").detach(copy.fromPort.value());
    TARVO_LOG(4) << "Detaching port " << cut.toPort.value() << " of sink";
    vertexOf(*this, "sink").detach(cut.toPort.value());
    VertexBase& destination = vertexOf(*this, to);
    TARVO_LOG(4) << "Detaching port " << copy.toPort.value() << " of " << to;
    destination.detach(copy.toPort.value());
    cut.toTAG = to;
    cut.toPort = copy.toPort.value();
    std::string port = cut.toPort.value();
    destination.attach(cut, port);
    d_->graph.addEdge(from, to, &cut);
    d_->removeCut_(bis, s);
    prune(bis);
    purgeAss();
}

void FlowSheet::restoreCuts() {
    for (const auto& [tag, child] : children()) {
        auto* stream = dynamic_cast<Stream*>(child.get());
        if (!stream || !stream->isCut()) continue;
        TARVO_LOG(3) << "Restoring cut(" << tag << ", " << stream->cutsource.value() << ")";
        d_->addCut_(tag, stream->cutsource.value());
        stream->setFlash(enthalpyFlashMode(*stream));
        TARVO_LOG(4) << "Estimating cut";
        flashOf(*stream).estimate(stream->P, stream->T);
    }
    for (const auto& [tag, child] : children())
        if (auto* sheet = dynamic_cast<FlowSheet*>(child.get())) sheet->restoreCuts();
}

// ---- drawing -----------------------------------------------------------------------------------------

// The picture shows each recycle closed, with the arrow head of the cut at its start: the Layout joins the
// cut and its copy in a drawing of its own, so the flowsheet's graph is the same afterwards.
void FlowSheet::printSvg(const char* path, bool tiny, bool raster, int) {
    TARVO_LOG(3) << "Entered";
    std::ofstream out(path);
    if (!out) throw ErrorRunTime(TARVO_FUNCTION, std::string("can not write to ") + path);
    std::vector<std::pair<std::string, std::string>> cuts;
    for (const auto& [copy, cut] : d_->cuts) {
        TARVO_LOG(3) << "Removing cut " << cut.out->tag();
        cuts.emplace_back(cut.out->tag(), copy);
    }
    Layout::printFlowsheet(d_->graph, cuts, out, tiny, raster);
    if (!out) throw ErrorRunTime(TARVO_FUNCTION, std::string("can not write to ") + path);
}

// ---- set-up and checks -------------------------------------------------------------------------------

void FlowSheet::setup() {
    for (Model* model : subModels()) {
        TARVO_LOG(4) << "Invoking setup() of sub-model: " << model->tag();
        model->setup();
    }
    // The flowsheet at the top checks those inside it along with its own units.
    if (!nested()) check();
}

void FlowSheet::initializeNonPersistents() {
    for (Model* model : subModels()) {
        TARVO_LOG(4) << "About to estimate object " << model->tag();
        model->initializeNonPersistents();
    }
    // restoreCuts reaches the flowsheets inside: only the one at the top calls it.
    if (retrieved() && !nested()) restoreCuts();
}

void FlowSheet::check() {
    TARVO_LOG(3) << "Now checking Edges";
    for (const auto& [tag, child] : children()) {
        const auto* edge = dynamic_cast<const EdgeBase*>(child.get());
        if (!edge) continue;
        if (vertexOf(*this, edge->fromTAG.value()).portFromEdge(edge->fullTag()) != edge->fromPort.value() ||
            vertexOf(*this, edge->toTAG.value()).portFromEdge(edge->fullTag()) != edge->toPort.value())
            throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "connectivity mismatch");
    }
    TARVO_LOG(3) << "Now checking Vertexes";
    for (const auto& [tag, child] : children())
        if (auto* vertex = dynamic_cast<VertexBase*>(child.get())) vertex->check();
    check_inout();
}

void FlowSheet::check_inout() {
    if (unitOf(*this, "source").nOut.value() < 1)
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "there is no in-flow to the flowsheet");
    if (unitOf(*this, "sink").nIn.value() < 1)
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "there is no out-flow from the flowsheet");
}

Value FlowSheet::massBalance() const {
    Value total = noMass;
    for (const auto& [tag, child] : children()) {
        const auto* vertex = dynamic_cast<const VertexBase*>(child.get());
        if (!vertex || dynamic_cast<const Terminator*>(vertex)) continue;
        TARVO_LOG(5) << "Adding " << tag << " = " << vertex->massBalance();
        total += vertex->massBalance();
    }
    TARVO_LOG(5) << "Done with mbtot = " << total;
    return total;
}

Value FlowSheet::energyBalance() const {
    Value total = noEnergy;
    for (const auto& [tag, child] : children()) {
        const auto* vertex = dynamic_cast<const VertexBase*>(child.get());
        if (!vertex || dynamic_cast<const Terminator*>(vertex)) continue;
        TARVO_LOG(5) << "Adding " << tag << " = " << vertex->energyBalance();
        total += vertex->energyBalance();
    }
    TARVO_LOG(5) << "Done with ebtot = " << total;
    return total;
}

// ---- inlets and outlets of a flowsheet inside another ------------------------------------------------

void FlowSheet::copyInlets() {
    if (d_->inputconnections_.empty())
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "no inlets connected");
    for (const auto& [port, tag] : d_->inputconnections_) {
        const int i = portIndex(port, "in");
        assert(i >= 0);
        Stream& internal = streamOf(*this, tag);
        if (!hasInlet(static_cast<unsigned int>(i))) {
            reportWarning("source stream " + tag +
                          " is not connected to any external inlet stream nor is it a cut stream");
            continue;
        }
        const auto& external = *my_cast_in<Stream*>(inlets_[i], __PRETTY_FUNCTION__);
        TARVO_LOG(4) << "Now copying external stream " << external.fullTag() << " to internal stream " << tag;
        copyStream(internal, external);
        const FlashMode mode = enthalpyFlashMode(internal);
        internal.setFlashOption(mode);
        internal.setFlash(mode);
        flashOf(internal).estimate(internal.P, internal.T);
        internal.estimateFlash();
    }
}

void FlowSheet::copyOutlets() {
    if (d_->outputconnections_.empty())
        throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), "no outlets connected");
    TARVO_LOG(4) << "Copying outlet streams";
    for (const auto& [port, tag] : d_->outputconnections_) {
        const int i = portIndex(port, "out");
        assert(i >= 0);
        if (!hasOutlet(static_cast<unsigned int>(i))) continue;
        copyStream(*my_cast_in<Stream*>(outlets_[i], __PRETTY_FUNCTION__), streamOf(*this, tag));
    }
}

// ---- convergence -------------------------------------------------------------------------------------

bool FlowSheet::enabled(std::list<Assignment*>::const_iterator it) const {
    if (it == ass_.cend()) return false;
    return enableAssignment.at(static_cast<std::size_t>(std::distance(ass_.cbegin(), it))) == 1;
}

void FlowSheet::makeSequentialAssembly(std::list<Assignment*>::iterator& it) {
    // The texts are made for a new assignment only: a refresh, on every pass, builds no string.
    static const std::string none;
    const auto assign = [&](Value& lhs, const Value& rhs, const auto& tag, const auto& description, int i,
                            ScalingMode mode, double xmin, double xmax, const Value& scale) {
        if (it != ass_.end())
            makeAssignment(it, lhs, rhs, none, none, i, mode, xmin, xmax, scale);
        else
            makeAssignment(it, lhs, rhs, tag(), description(), i, mode, xmin, xmax, scale);
    };
    for (const auto& [tag, cut] : d_->cuts) {
        Stream& in = *cut.in;
        Stream& out = *cut.out;
        assert(in.Tphase->representation() == out.Tphase->representation());
        // The pressures' equation in atmospheres, as a flash has its own: in pascals, the rounding of a
        // pressure carried through a chain of units, some 1e-10 Pa, lies above the solver's tolerance.
        static const Value pressureScale(1.0 / 101325.0);
        assign(
            in.P, out.P, [] { return std::string("cut.second->out()->P"); },
            [&tag = tag] { return "Pressure for stream " + tag; }, 0, ScalingMode::log, 1.0, 101325.0,
            pressureScale);
        auto* inTotal = dynamic_cast<Phase::MassMolarProperties*>(in.Tphase);
        auto* outTotal = dynamic_cast<Phase::MassMolarProperties*>(out.Tphase);
        if (outTotal) {
            assert(inTotal != nullptr);
            static const Value enthalpyScale(1e-5);
            assign(
                inTotal->H, outTotal->H, [] { return std::string("out_Tphase_MNP->H"); },
                [&tag = tag] { return "Enthalpy for stream " + tag; }, 0, ScalingMode::noscaling, 1.0, 10.0,
                enthalpyScale);
        } else {
            assert(inTotal == nullptr);
        }
        for (int i = 0; i < NCOMPONENTS; ++i)
            assign(
                in.Tphase->flow(i), out.Tphase->flow(i),
                [i] { return "cut.second->out()->Tphase->flow(" + std::to_string(i) + ")"; },
                [i, &tag = tag] { return "Flow for component " + components[i]->name + " in stream " + tag; },
                i, ScalingMode::noscaling, 0.0, 1.0, one);
    }
    makeUserEquations(it);
    if (enableAssignment.size() < ass_.size()) {
        TARVO_LOG(3) << "Initializing enableAssignment vector with enableAssignment.size = " << ass_.size();
        enableAssignment.value().resize(ass_.size(), 1);
    }
}

void FlowSheet::setup_of() {
    d_->simultaneous.gather();
}

int FlowSheet::calculateResidualsLocal() {
    return d_->simultaneous.calculateResiduals(residuals);
}

void FlowSheet::calculate(int level) {
    if (!simultaneousSupported()) {
        go(Calculatable::sequential, level);
        return;
    }
    if (NITER.value() == -1) {
        TARVO_LOG(2) << "Starting sequential pre-computation";
        go(Calculatable::sequential, level);
        TARVO_LOG(2) << "Switch to simultaneous computation";
    }
    go(simultaneous, level);
}

void FlowSheet::go(SolutionMode mode, int level) {
    TARVO_LOG(3) << "Entered with solutionMode = " << mode << " level = " << level;
    requireKnownMode_(mode);
    if (d_->graph.vertexCount() < 3) {
        reportError("flowsheet contains no unis, bypassing");
        return;
    }
    if (mode == defaultMode) mode = simultaneousSupported() ? simultaneous : Calculatable::sequential;
    if (!d_->graph.scheduled()) d_->graph.doSchedule(level, 1, rootNode());
    setup_of();
    vertexOf(*this, "sink").setPristine();
    const bool inside = nested();
    if (inside) copyInlets();
    switch (mode) {
    case simultaneous:
        TARVO_LOG(2) << "Calculating simultaneously flowsheet with level = " << level;
        if (!simultaneousSupported()) throw ErrorRunTime(TARVO_FUNCTION, "Simultaneous mode not supported");
        d_->simultaneous.solve();
        break;
    case onePass:
        TARVO_LOG(3) << "Calculating one pass with level = " << level;
        pass(onePass, level);
        break;
    default: {
        const int leading = simultaneousSupported() ? passesBeforeNewton() : 0;
        const int maximum = leading > 0 ? leading : std::max(leastPasses, sequential());
        TARVO_LOG(2) << "Calculating sequentially flowsheet with maximum iterations = " << maximum;
        if (leading == 0) {
            d_->sequential.converge(method_, maximum, level);
            break;
        }
        // The passes bring a new system near its solution. One that its last solve left converged, as a chain
        // inside a plant's loop, is nearer where it stands: a single pass measures how far its inlets moved it.
        d_->sequential.lead(method_, d_->simultaneous.converged() ? 1 : maximum, level);
        TARVO_LOG(2) << "Calculating simultaneously flowsheet with level = " << level;
        d_->simultaneous.solve();
    }
    }
    if (inside) {
        copyOutlets();
        calculateBalance();
    }
    countCalculation();
}

void FlowSheet::pass(SolutionMode mode, int level) {
    pre(mode, level);
    d_->graph.singlePass(mode, level);
    post(mode, level);
}
