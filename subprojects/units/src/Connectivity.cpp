#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/Connectivity.h>
#include <tarvo/utility/CachedCast.h>
#include <tarvo/utility/FunctionName.h>

#include <cstdlib>
#include <iostream>

using Tarvo::Persistency::Defaults;

unsigned int parse_int(const std::string& text, const std::string& tag) {
    char* end = nullptr;
    const long number = std::strtol(text.c_str(), &end, 10);
    if (*end != '\0') throw ErrorConnectivity(TARVO_FUNCTION, tag, "Unparseable port [" + text + "]");
    if (number <= 0)
        throw ErrorConnectivity(TARVO_FUNCTION, tag, "Invalid port [" + std::to_string(number - 1) + "]");
    return static_cast<unsigned int>(number - 1);
}

Connectivity::Connectivity(const Defaults& defaults, uint32_t id, Persistency* persistency,
                           Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root) {
    for (Integer* i : {&nIn, &nOut, &maxNIn, &maxNOut})
        addVariable(*i);
    addVariable(constraints);
}

void Connectivity::fault_(const std::string& text) const {
    throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), text);
}

void Connectivity::impossible_(const std::string& port) const {
    throw ErrorConnectivity(TARVO_FUNCTION, tag(), type(), port);
}

Connectivity::Side Connectivity::inletSide_() {
    return {inlets_, nIn, maxNIn, indexedInlet_, "in"};
}

Connectivity::Side Connectivity::outletSide_() {
    return {outlets_, nOut, maxNOut, indexedOutlet_, "out"};
}

void Connectivity::attach(EdgeBase& edge, std::string& port) {
    translate(port);
    if (port.compare(0, 2, "in") == 0)
        attachTo_(inletSide_(), edge, port);
    else if (port.compare(0, 3, "out") == 0)
        attachTo_(outletSide_(), edge, port);
    else
        impossible_(port);
    attached_ = true;
}

// The slot is worked out first and taken only after the vertex has accepted the edge, so that a refused
// attach leaves the lists as they were.
void Connectivity::attachTo_(Side side, EdgeBase& edge, std::string& port) {
    const std::size_t prefix = std::char_traits<char>::length(side.prefix);
    const bool numbered = port.size() > prefix;
    std::size_t slot;
    if (!numbered) {
        if (side.indexed)
            std::cout << "===== Mixing " << side.prefix << " with " << side.prefix
                      << "XX mode when connecting to " << edge.tag() << std::endl;
        if (side.limit.value() != -1 && side.limit.value() <= side.count.value()) impossible_(port);
        slot = static_cast<std::size_t>(side.count.value());
        port = side.prefix + std::to_string(slot + 1);
    } else {
        slot = parse_int(port.substr(prefix), fullTag());
        if (side.limit.value() >= 0 && slot >= static_cast<std::size_t>(side.limit.value()))
            fault_("Invalid port [" + std::to_string(slot) + "]");
        if (slot < side.edges.size() && side.edges[slot])
            fault_("Port [" + std::to_string(slot) + "]  already in use");
    }
    VertexBase::attach(edge, port);
    if (numbered) side.indexed = true;
    if (side.edges.size() < slot + 1) side.edges.resize(slot + 1, nullptr);
    side.edges[slot] = &edge;
    ++side.count.value();
}

void Connectivity::detach(std::string port) {
    translate(port);
    if (port.compare(0, 2, "in") == 0)
        detachFrom_(inletSide_(), port);
    else if (port.compare(0, 3, "out") == 0)
        detachFrom_(outletSide_(), port);
    else
        fault_("Impossible to detach from port");
    VertexBase::detach(port);
}

void Connectivity::detachFrom_(Side side, const std::string& port) {
    const std::size_t prefix = std::char_traits<char>::length(side.prefix);
    const unsigned int slot = parse_int(port.substr(prefix), fullTag());
    if (side.count.value() <= 0 || slot >= side.edges.size() || !side.edges[slot]) impossible_(port);
    side.edges[slot] = nullptr;
    --side.count.value();
}

void Connectivity::clearConnections() {
    for (Side side : {inletSide_(), outletSide_()}) {
        for (EdgeBase* edge : side.edges)
            if (edge) VertexBase::detach(portFromEdge(edge->fullTag()));
        side.edges.clear();
        side.count.value() = 0;
        side.indexed = false;
    }
    streamsCollected_ = false;
}

void Connectivity::inletRequired(unsigned int index) {
    if (maxNIn.value() >= 0 && index >= static_cast<unsigned int>(maxNIn.value()))
        fault_("index out of range");
    std::string& required = constraints.value();
    if (required.size() < index + 1) required.resize(index + 1, ' ');
    required[index] = 'R';
}

bool Connectivity::hasInlet(unsigned int index) const {
    return index < inlets_.size() && inlets_[index];
}

bool Connectivity::hasOutlet(unsigned int index) const {
    return index < outlets_.size() && outlets_[index];
}

EdgeBase& Connectivity::inlet(unsigned int index) const {
    if (maxNIn.value() >= 0 && index >= static_cast<unsigned int>(maxNIn.value()))
        fault_("inlet index out of range");
    if (!hasInlet(index)) fault_("the inlet is not connected");
    return *inlets_[index];
}

EdgeBase& Connectivity::outlet(unsigned int index) const {
    if (maxNOut.value() >= 0 && index >= static_cast<unsigned int>(maxNOut.value()))
        fault_("outlet index out of range");
    if (!hasOutlet(index)) fault_("the outlet is not connected");
    return *outlets_[index];
}

EdgeBase& Connectivity::edgeFromPort(const std::string& port) const {
    if (port.compare(0, 2, "in") == 0) {
        const unsigned int slot = parse_int(port.substr(2), fullTag());
        if (slot >= inlets_.size()) fault_("Inlet port [" + port + "] invalid");
        if (!inlets_[slot]) fault_("Inlet  port [" + port + "] not attached");
        return *inlets_[slot];
    }
    if (port.compare(0, 3, "out") == 0) {
        const unsigned int slot = parse_int(port.substr(3), fullTag());
        if (slot >= outlets_.size()) fault_("Outlet port [" + port + "] invalid");
        if (!outlets_[slot]) fault_("Outlet port [" + port + "] not attached");
        return *outlets_[slot];
    }
    fault_("Port [" + port + "] invalid");
}

std::string Connectivity::portInlet(int i) const {
    if (i < 1) fault_("index out of range");
    return "in" + std::to_string(i);
}

std::string Connectivity::portOutlet(int i) const {
    if (i < 1) fault_("index out of range");
    return "out" + std::to_string(i);
}

void Connectivity::printConnectivity() const {
    std::cout << "============================== printConnectivity ===============================\n"
              << "nIn = " << nIn.value() << "\ninlets size = " << inlets_.size()
              << "\nnOut = " << nOut.value() << "\noutlets size = " << outlets_.size()
              << "\nmaxNIn = " << maxNIn.value() << "\nmaxNOut = " << maxNOut.value() << "\n";
    for (std::size_t i = 0; i < inlets_.size(); ++i) {
        if (inlets_[i])
            std::cout << "inlet[" << i << "] = " << inlets_[i]->tag() << "\n";
        else
            std::cout << "inlet[" << i << "] disconnected\n";
    }
    for (std::size_t i = 0; i < outlets_.size(); ++i) {
        if (outlets_[i])
            std::cout << "outlet[" << i << "] = " << outlets_[i]->tag() << "\n";
        else
            std::cout << "outlet[" << i << "] disconnected\n";
    }
    std::cout.flush();
}

void Connectivity::check() {
    if (maxNIn.value() != -1 && maxNIn.value() < nIn.value()) fault_("too many inlets connected");
    if (maxNOut.value() != -1 && maxNOut.value() < nOut.value()) fault_("too many outlets connected");
    const std::string& required = constraints.value();
    for (std::size_t i = 0; i < required.size(); ++i)
        if (required[i] == 'R' && !hasInlet(static_cast<unsigned int>(i)))
            fault_("required connection " + portInlet(static_cast<int>(i) + 1));

    const bool alone = isRoot();
    const Node& root = *rootNode();
    const auto dangling = [&](const std::vector<EdgeBase*>& edges, int count, const char* side) {
        for (std::size_t i = 0; i < edges.size() && i < static_cast<std::size_t>(count); ++i)
            if (!edges[i] || !root.contains(edges[i]->id()))
                reportError(std::string(side) + tag() + " connected to nonexistent stream");
    };
    if (!alone) {
        dangling(inlets_, nIn.value(), "inlet ");
        dangling(outlets_, nOut.value(), "outlet ");
        if (maxNIn.value() != -1 && maxNIn.value() > nIn.value())
            reportWarning("only " + std::to_string(nIn.value()) + " inlets connected, " +
                          std::to_string(maxNIn.value()) + " available");
        if (maxNOut.value() != -1 && maxNOut.value() > nOut.value())
            reportWarning("only " + std::to_string(nOut.value()) + " outlets connected, " +
                          std::to_string(maxNOut.value()) + " available");
    }
    const auto sequential = [](const std::vector<EdgeBase*>& edges) {
        for (std::size_t i = 1; i < edges.size(); ++i)
            if (edges[i] && !edges[i - 1]) return false;
        return true;
    };
    if (!sequential(inlets_)) reportWarning("connected inlets are not sequential");
    if (!sequential(outlets_)) reportWarning("connected outlets are not sequential");
    if (!alone) {
        if (maxNIn.value() == -1 && nIn.value() == 0)
            reportWarning("unlimited inlets but there is no inlet connected");
        if (maxNOut.value() == -1 && nOut.value() == 0)
            reportWarning("unlimited outlets but there is no outlet connected");
    }
}

void Connectivity::calculateBalance() {
    mdotin.clear();
    mdotout.clear();
    cduty.clear();
    for (Quantity& q : mdotcomp)
        q.clear();
    // A tear copy that enters this unit is its real inlet, so cut streams count like any other.
    const auto add = [this](EdgeBase* edge, double sign) {
        const auto* stream = Tarvo::Utility::cachedCast<const Stream*>(edge);
        if (!stream) return;
        const Phase::Mass& total = *stream->Tphase;
        for (int i = 0; i < NCOMPONENTS; ++i)
            mdotcomp[i] += sign * total.mdotcomps[i];
        (sign > 0 ? mdotin : mdotout) += total.mdot;
        if (const auto* properties = Tarvo::Utility::cachedCast<const Phase::MassMolarProperties*>(&total))
            cduty += sign * total.mdot * properties->h;
    };
    for (EdgeBase* edge : outlets_)
        if (edge) add(edge, -1.0);
    for (EdgeBase* edge : inlets_)
        if (edge) add(edge, 1.0);
    cmdot = mdotin - mdotout;
}

bool Connectivity::firstInletConnected_() {
    collectStreams_();
    if (!inletstreams_.empty() && inletstreams_[0]) return true;
    reportError("no inlet connected, nothing to do");
    return false;
}

bool Connectivity::couplesConnected_(std::size_t n) {
    collectStreams_();
    inletstreams_.resize(n, nullptr);
    outletstreams_.resize(n, nullptr);
    for (std::size_t i = 0; i < n; ++i) {
        if (!inletstreams_[i] || !outletstreams_[i]) {
            reportError("not all inlets and outlets are connected, nothing to do");
            return false;
        }
        if (!inletstreams_[i]->hasProperties() || !outletstreams_[i]->hasProperties()) {
            reportError("streams without enthalpies, nothing to do");
            return false;
        }
    }
    return true;
}

bool Connectivity::collectStreams_() {
    if (streamsCollected_) return false;
    streamsCollected_ = true;
    const auto collect = [](const std::vector<EdgeBase*>& edges, std::vector<Stream*>& streams) {
        streams.clear();
        for (EdgeBase* edge : edges)
            streams.push_back(edge ? my_cast<Stream*>(edge, "Connectivity::setup_of") : nullptr);
    };
    collect(inlets_, inletstreams_);
    collect(outlets_, outletstreams_);
    return true;
}

void Connectivity::requireKnownMode_(SolutionMode mode) const {
    if (mode < defaultMode || mode > onePass)
        throw ErrorSmartEnum(TARVO_FUNCTION, "Solution mode", std::to_string(static_cast<int>(mode)));
}
