#include <tarvo/core/ObjectiveNleAuto.h>

#include <tarvo/core/Jacobian.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>
#include <tarvo/value/ActiveContext.h>

#include <algorithm>
#include <cassert>
#include <utility>

namespace {
// Warnings of the objectives show at the default verbosity; the listing of unknowns one level up.
constexpr int verbosityFile = -1;
} // namespace

ObjectiveNleAuto::ObjectiveNleAuto(std::string name) : name_(std::move(name)) {}

void ObjectiveNleAuto::operator()(double* x, double* y, Jacobian* J) {
    try {
        evaluate_(x, y, J);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

namespace {
// A Jacobian of up to this many blocks of the dense store's directions may be evaluated block by block:
// each block is one evaluation of the model whose derivatives sit inside the numbers, where the sparse
// store of all directions at once allocates at every step of the arithmetic. A 4-component flash
// (9 unknowns) takes two blocks in about half the time of one sparse evaluation; beyond a few blocks the
// repeated values cost more than the allocations save.
constexpr unsigned maxBlocks = 2;

// One direction per unknown of the block [first, first + count), each unknown the independent variable of
// its own, for the lifetime of the object: the unknowns are released and the context popped however the
// evaluation ends.
class Seeding {
public:
    Seeding(ObjectiveNleAuto& objective, unsigned first, unsigned count)
        : objective_(objective), first_(first), count_(count), scope_(static_cast<int>(count)) {
        for (unsigned i = first; i < first + count; ++i)
            if (Value* u = objective.unknown(i)) u->active().setActive(static_cast<int>(i - first));
    }
    ~Seeding() {
        for (unsigned i = first_; i < first_ + count_; ++i)
            if (Value* u = objective_.unknown(i)) u->active().inactivate(static_cast<int>(i - first_));
    }
    Seeding(const Seeding&) = delete;
    Seeding& operator=(const Seeding&) = delete;

private:
    ObjectiveNleAuto& objective_;
    unsigned first_, count_;
    ActiveContext::Scope scope_;
};
} // namespace

unsigned ObjectiveNleAuto::blockSize_(const Jacobian& J) const {
    const unsigned n = size(), dense = Active::ndense;
    return blocks_ && !J.sparse() && n > dense && n <= maxBlocks * dense ? dense : n;
}

void ObjectiveNleAuto::evaluate_(double* x, double* y, Jacobian* J) {
    modelAtPoint_ = false;
    // The numbers are written before the seeding, while no unknown is an independent variable: an active
    // unknown is read-only.
    setPoint_(x);
    const unsigned n = size();
    if (!J) {
        fillResiduals_();
        for (unsigned i = 0; i < n; ++i)
            y[i] = residuals[i].toDouble();
        modelAtPoint_ = true;
        return;
    }
    assert(n == J->size());
    const double* factors = columnFactors_(x);
    const unsigned block = blockSize_(*J);
    for (unsigned first = 0; first < n; first += block) {
        const Seeding seeding(*this, first, std::min(block, n - first));
        fillResiduals_();
        if (block == n)
            J->fill(residuals, factors, columnSums_);
        else
            J->fillColumns(first, residuals, factors, columnSums_);
    }
    for (unsigned i = 0; i < n; ++i)
        y[i] = residuals[i].toDouble();
    for (unsigned i = 0; i < n; ++i) {
        if (columnSums_[i] == 0) {
            TARVO_LOG(2) << "In the Jacobian of " << name_ << ", unknown "
                         << (labels_[i].empty() ? std::to_string(i) : labels_[i])
                         << " has no effect on any equation: singularity";
        }
    }
}

void ObjectiveNleAuto::scalex(double*) {}

void ObjectiveNleAuto::unscalex(double* x) {
    storeSolution_(x, true);
}

void ObjectiveNleAuto::addUnknown(Value* unknown, const std::string& description) {
    xp_.push_back(unknown);
    descriptions_.push_back(description);
    labels_.emplace_back();
    residuals.emplace_back();
}

void ObjectiveNleAuto::setLabel(unsigned i, const std::string& tag) {
    labels_.at(i) = tag;
}

bool ObjectiveNleAuto::init(double* x) {
    bool any = false;
    for (unsigned i = 0; i < xp_.size(); ++i) {
        if (!xp_[i]) {
            TARVO_LOG(2) << "Impossible to init unknown[" << i << "] " << descriptions_[i];
            continue;
        }
        x[i] = xp_[i]->toDouble();
        any = true;
    }
    return any;
}

void ObjectiveNleAuto::setUnknowns(const double* x) {
    // Active assignment: the number changes, the units stay.
    for (unsigned i = 0; i < xp_.size(); ++i)
        if (xp_[i]) xp_[i]->active() = x[i];
}

void ObjectiveNleAuto::clearderivatives() {
    for (Value* v : xp_)
        if (v) v->active().clearderivatives();
}

int ObjectiveNleAuto::zero_residuals(std::vector<Value>& r, uint32_t offset) {
    const unsigned n = size();
    assert(offset + n <= r.size());
    for (unsigned i = 0; i < n; ++i) {
        if (!xp_[i]) continue;
        const Active& u = xp_[i]->active();
        r[offset + i].active() += u - u.val();
    }
    return static_cast<int>(n);
}

void ObjectiveNleAuto::print() const {
    TARVO_LOG(1) << "Listing unknowns";
    for (unsigned i = 0; i < xp_.size(); ++i) {
        if (xp_[i]) {
            TARVO_LOG(1) << descriptions_[i] << " = " << *xp_[i];
        } else {
            TARVO_LOG(1) << descriptions_[i] << " = (none)";
        }
    }
}

void ObjectiveNleAuto::setPoint_(double* x) {
    setUnknowns(x);
}

unsigned int ObjectiveNleAuto::size() const {
    assert(xp_.size() == residuals.size());
    return static_cast<unsigned int>(xp_.size());
}

void ObjectiveNleAuto::storeSolution_(const double* x, bool recalculate) {
    bool there = modelAtPoint_;
    for (unsigned i = 0; there && i < xp_.size(); ++i)
        there = !xp_[i] || xp_[i]->toDouble() == x[i];
    if (recalculate && there) return;
    // The context makes the model code run in the derivative store of this system's size, with no
    // direction seeded, so nothing that it writes keeps stale derivatives.
    ActiveContext::Scope scope(static_cast<int>(size()));
    setUnknowns(x);
    clearderivatives();
    if (recalculate) {
        fillResiduals_();
        modelAtPoint_ = true;
    }
}
