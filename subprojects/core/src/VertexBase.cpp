#include <tarvo/components/ListComponents.h>
#include <tarvo/core/EdgeBase.h>
#include <tarvo/core/VertexBase.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <cmath>

namespace {
constexpr int verbosityFile = -1;
} // namespace

VertexBase::VertexBase(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                       Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root) {
    if (NCOMPONENTS < 1) throw ErrorRunTime(TARVO_FUNCTION, "no components defined");
    for (Quantity* q : {&cmdot, &mdotin, &mdotout, &cduty}) addVariable(*q);
    addComponentVariables(mdotcomp, "mdotcomp", "mass flow unbalance", "kg/h", 0.0);
    if (persistency) restoreParameters(persistency);
}

void VertexBase::connectivityError(const std::string& text) const { throw ErrorConnectivity(TARVO_FUNCTION, fullTag(), text); }

void VertexBase::translate(std::string& port) const {
    const auto it = synonyms_.find(port);
    if (it == synonyms_.end()) return;
    port = it->second;
    TARVO_LOG(4) << "Translated to = " << port;
}

void VertexBase::registerSynonym(const std::string& synonym, const std::string& port) {
    if (synonym.compare(0, 2, "in") == 0) connectivityError("synonyms are not allowed to start with 'in'");
    if (synonym.compare(0, 3, "out") == 0) connectivityError("synonyms are not allowed to start with 'out'");
    synonyms_[synonym] = port;
}

void VertexBase::attach(EdgeBase& edge, std::string& port) {
    TARVO_LOG(3) << "Entered to connect " << edge.fullTag() << " to " << fullTag() << " at " << port;
    translate(port);
    if (connections_.left.count(edge.fullTag())) connectivityError("Duplicate connected edge");
    connections_.insert(Connections::value_type(edge.fullTag(), port));
}

void VertexBase::detach(std::string port) {
    translate(port);
    if (!connections_.right.erase(port)) connectivityError("Port not connected");
}

const std::string& VertexBase::edgeFromPort(const std::string& port) const {
    const auto it = connections_.right.find(port);
    if (it == connections_.right.end()) connectivityError("port not connected");
    return it->second;
}

const std::string& VertexBase::portFromEdge(const std::string& edge) const {
    const auto it = connections_.left.find(edge);
    if (it == connections_.left.end()) connectivityError("edge not connected");
    return it->second;
}

VertexBase::PortLocation VertexBase::locationFromEdge(const std::string& edge) const {
    const auto it = connections_.left.find(edge);
    if (it == connections_.left.end()) connectivityError("Edge not connected");
    return portLocation(it->second);
}

VertexBase::PortLocation VertexBase::portLocation(const std::string& port) const {
    return port.compare(0, 3, "out") == 0 ? east : west;
}

namespace {
// Made once: a unit's text is parsed where a Value is made from it, and every unit checks its balances.
const Value noMassFlow(0.0, "kg/s");
const Value noPower(0.0, "W");
const Value leastMassFlow(0.1, "kg/h");
const Value largeUnbalance(1.0, "kW");
const Value smallUnbalance(10.0, "W");
} // namespace

Value VertexBase::massBalance() const { return noMassFlow; }

Value VertexBase::energyBalance() const { return noPower; }

void VertexBase::checkBalance() {
    const Value A = fabs(mdotin + mdotout) + leastMassFlow;
    const Value d = fabs(cmdot - massBalance());
    TARVO_LOG(5) << "cmdot = " << cmdot << " mdotin = " << mdotin << " mdotout = " << mdotout
                 << " massBalance = " << massBalance();
    if (d > A / 1000.0)
        reportError("mass flow unbalance");
    else if (d > A / 100000.0)
        reportWarning("mass flow unbalance");
    const Value e = fabs(cduty - energyBalance());
    TARVO_LOG(5) << "cduty = " << cduty << " energyBalance = " << energyBalance();
    if (e > largeUnbalance)
        reportError("energy flow unbalance");
    else if (e > smallUnbalance)
        reportWarning("energy flow unbalance");
}
