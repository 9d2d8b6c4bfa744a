#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/flowsheet/SimultaneousConvergence.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/Log.h>

namespace {
constexpr int verbosityFile = -1;
} // namespace

SimultaneousConvergence::SimultaneousConvergence(FlowSheet& sheet) : sheet_(sheet), solver_(0, &sheet) {
    solver_.setVerbosityInstance(1);
    solver_.setTolerances(0, 0, 1e-11, 0);
}

void SimultaneousConvergence::include_(ObjectiveNleAd& objective) {
    included_.push_back(&objective);
    sheet_.addObjectiveFunction(objective);
}

// The feeds of a flowsheet inside another are copies of streams outside; its cut copies are its own. So are
// the outlets of units without a system of their own, as a Mixer or a Divider: they only set an outlet's
// enthalpy, and its temperature would otherwise keep the value of the last sequential pass.
bool SimultaneousConvergence::ownsFlash_(const Stream& stream, bool inside) const {
    const std::string& from = stream.fromTAG.value();
    // The source is a unit without objective too; its streams, the feeds, follow the rules below.
    if (from != "source" && sheet_.hasChild(from) &&
        !dynamic_cast<ObjectiveNleAdVertex*>(&sheet_.child(from))) {
        TARVO_LOG(4) << "outlet of a unit without objective, hence include Flash of " << stream.tag();
        return true;
    }
    if (!inside && from == "source") {
        TARVO_LOG(4) << "not inside flowsheet-in-flowsheet, hence include Flash of " << stream.tag();
        return true;
    }
    if (inside && stream.isCut()) {
        TARVO_LOG(4) << "inside flowsheet-in-flowsheet but cut stream, hence include Flash of "
                     << stream.tag();
        return true;
    }
    return false;
}

void SimultaneousConvergence::gather() {
    if (gathered_) return;
    gathered_ = true;
    TARVO_LOG(3) << "Gather unknowns and residuals based on Assignments";
    auto end = sheet_.assignments().end();
    sheet_.makeSequentialAssembly(end);
    std::size_t k = 0;
    for (Assignment* a : sheet_.assignments())
        sheet_.addUnknown(&a->lhs(), sheet_.scalers()[k++], a->tag());
    TARVO_LOG(3) << "Pick up objective functions in blocks and feed streams";
    const bool inside = sheet_.nested();
    for (const auto& [tag, child] : sheet_.children()) {
        if (auto* stream = dynamic_cast<Stream*>(child.get())) {
            if (!ownsFlash_(*stream, inside)) continue;
            Flash& flash = flashOf(*stream);
            if (flash.size() > 0) include_(flash);
        } else if (auto* unit = dynamic_cast<ObjectiveNleAdVertex*>(child.get())) {
            unit->setup_of();
            if (unit->size() > 0) include_(*unit);
        }
    }
    TARVO_LOG(3) << "Finished with " << sheet_.size() << " equations and " << included_.size()
                 << " objective functions";
}

void SimultaneousConvergence::assignResidual_(const Assignment& a, Value& residual) {
    constexpr double degenerate = 4.440892098500626e-16;
    residual = (a.lhs() - a.rhs) * a.scale;
    // Where derivatives are carried, a row that depends on no unknown would make the Jacobian singular.
    if (Active::numdir() > 0 && residual.active().sumAbsoluteDerivatives() < degenerate) {
        sheet_.reportWarning("degenerate equation " + a.tag());
        // A zero with the derivatives of lhs keeps the row of the Jacobian alive.
        residual.active() += a.lhs().active() - a.lhs().toDouble();
    }
}

int SimultaneousConvergence::calculateResiduals(std::vector<Value>& r) {
    sheet_.resetErrors();
    sheet_.go(Calculatable::onePass, 0);
    auto it = sheet_.assignments().begin();
    sheet_.makeSequentialAssembly(it);
    uint32_t offset = 0;
    for (Assignment* a : sheet_.assignments())
        assignResidual_(*a, r[offset++]);
    for (ObjectiveNleAd* objective : included_) {
        // A flash without flow switches its residuals off by adding zeros to what its places hold.
        for (unsigned k = 0; k < objective->size(); ++k)
            r[offset + k].clear();
        offset += objective->calculateResiduals(r, offset);
    }
    return static_cast<int>(offset);
}

void SimultaneousConvergence::solve() {
    solver_.resize(static_cast<int>(sheet_.size()));
    sheet_.init(solver_.x());
    solver_.setMaxIterations(sheet_.maximumIterations());
    const int status = solver_.solve();
    if (status < 0) sheet_.reportWarning(solver_.statusText(status));
    if (status > 0) sheet_.reportError(solver_.statusText(status));
    // A solver that stopped short of its test has failed, however small the residuals it left.
    converged_ = status == 0 && !solver_.failed();
    if (!converged_) sheet_.reportError("simultaneous convergence failure;");
    sheet_.NITER = solver_.iterations();
}
