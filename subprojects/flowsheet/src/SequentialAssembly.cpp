#include <tarvo/flowsheet/SequentialAssembly.h>
#include <tarvo/utility/Log.h>

#include <cassert>

namespace {
constexpr int verbosityFile = -1;
} // namespace

SequentialAssembly::~SequentialAssembly() { purgeAss(); }

bool SequentialAssembly::enabled(std::list<Assignment*>::const_iterator) const { return true; }

void SequentialAssembly::makeAssignment(std::list<Assignment*>::iterator& it, Value& lhs, const Value& rhs,
                                        const std::string& tag, std::string description, int i,
                                        Tarvo::Utility::ScalingMode mode, double xmin, double xmax, const Value& scale) {
    if (it != ass_.end()) {
        Assignment& a = **it;
        a.oldRHS = a.rhs;
        if (enabled(it)) {
            a.rhs = rhs;
            TARVO_LOG_STATIC(5) << "Setting lhs as " << a.tag();
        } else {
            TARVO_LOG_STATIC(5) << "Assigning " << a.tag() << " since Assignment is inactive" << " - was " << a.rhs;
            a.rhs = lhs;
        }
        a.scale = scale;
        ++it;
        return;
    }
    for (auto at = description.find("[i]"); at != std::string::npos; at = description.find("[i]"))
        description.replace(at, 3, "[" + std::to_string(i) + "]");
    auto* a = new Assignment(lhs, rhs, tag);
    a->description = std::move(description);
    a->scale = scale;
    ass_.push_back(a);
    scalers_.emplace_back(mode, xmin, xmax, 1.0, 10.0);
    it = ass_.end();
}

void SequentialAssembly::directstep() {
    for (Assignment* a : ass_) a->directstep(damping_, maxChange_);
}

void SequentialAssembly::wegsteinstep() {
    for (Assignment* a : ass_) a->wegsteinstep();
}

double SequentialAssembly::deltaseq() const {
    double total = 0;
    for (const Assignment* a : ass_) total += a->delta();
    TARVO_LOG_STATIC(3) << "Total error of the " << ass_.size() << " Assignments = " << total;
    return total;
}

void SequentialAssembly::purgeAss() {
    for (Assignment* a : ass_) {
        TARVO_LOG_STATIC(5) << "deleting Assignment " << a->tag();
        delete a;
    }
    ass_.clear();
    scalers_.clear();
}

void SequentialAssembly::setDamping(double d) {
    assert(d >= zero.toDouble());
    assert(d < one.toDouble());
    damping_ = d;
}

void SequentialAssembly::setMaxChange(double c) {
    assert(c >= zero.toDouble());
    assert(c < one.toDouble());
    maxChange_ = c;
}
