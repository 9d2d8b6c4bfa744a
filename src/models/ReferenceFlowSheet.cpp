#include <tarvo/components/ListComponents.h>
#include <tarvo/models/ReferenceFlowSheet.h>

#include <algorithm>
#include <cmath>

using Tarvo::Persistency::Defaults;

namespace {
// The fewest of a reference flowsheet, whose passes are its whole solve: the engine's air flow, a
// substitution that gains a factor of some 20 a pass, closes to the tolerance below in about 10.
constexpr int leastReferencePasses = 50;
} // namespace

ReferenceFlowSheet::ReferenceFlowSheet(const Defaults& defaults, uint32_t id, Persistency* persistency,
                                       Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), VertexBase(defaults, id, persistency, parent, root),
      FlowSheet(defaults, id, persistency, parent, root) {
    // The passes are the whole solve (see simultaneousSupported): they go on until the recycles close to
    // well below the balances that a user reads, 1e-9 of the flows.
    seqTol = 1e-10;
}

int ReferenceFlowSheet::sequential() const {
    return passesOfNestedSheets(*this, leastReferencePasses);
}

void ReferenceFlowSheet::designEquation(std::list<Assignment*>::iterator& it, Value& target, const Value& value,
                                        const std::string& tag, const std::string& description) {
    const double size = std::fabs(target.toDouble());
    makeAssignment(it, target, value, tag, description, 0, Tarvo::Utility::ScalingMode::noscaling, 0.0, 1.0,
                   Value(size > 0 ? 1 / size : 1.0));
}

void ReferenceFlowSheet::productShares(const std::string& product, const std::string& feed,
                                       std::vector<Quantity>& recovery, std::vector<Quantity>& purity) {
    for (int i = 0; i < NCOMPONENTS; ++i) {
        recovery[i] = Q(product + ":Tphase.ndotcomps", i) / Q(feed + ":Tphase.ndotcomps", i);
        purity[i] = Q(product + ":Tphase.x", i);
    }
}

void ReferenceFlowSheet::setCompressor(const std::string& unit, const Value& P, double theta, double etaM,
                                       double etaE) {
    setInput(Q(unit + ".P"), P);
    setInput(Q(unit + ".theta"), Value(theta));
    setInput(Q(unit + ".etaM"), Value(etaM));
    setInput(Q(unit + ".etaE"), Value(etaE));
}

int passesOfNestedSheets(const FlowSheet& sheet, int least) {
    int passes = least;
    for (const auto& [tag, child] : sheet.children())
        if (const auto* nested = dynamic_cast<const FlowSheet*>(child.get()))
            passes = std::max(passes, nested->sequential());
    return passes;
}

bool nestedSheetsSupportSimultaneous(const FlowSheet& sheet) {
    for (const auto& [tag, child] : sheet.children())
        if (const auto* nested = dynamic_cast<const FlowSheet*>(child.get()))
            if (!nested->simultaneousSupported()) return false;
    return true;
}
