#include <tarvo/flowsheet/Assignment.h>

#include <cmath>

Assignment::Assignment(Value& lhs, const Value& rhs, std::string tag)
    : rhs(rhs), oldLHS(rhs), oldRHS(rhs), scale(1.0), tag_(std::move(tag)), lhs_(&lhs) {}

void Assignment::directstep(double damping, double maxChange) {
    Value step = (rhs - *lhs_) * (1.0 - damping);
    if (maxChange != 1.0) {
        const double limit = std::fabs(lhs_->toDouble() * maxChange);
        if (limit > 0) {
            if (step.toDouble() > limit) step.active() = limit;
            if (step.toDouble() < -limit) step.active() = -limit;
        }
    }
    oldLHS = *lhs_;
    *lhs_ = *lhs_ + step;
}

void Assignment::wegsteinstep() {
    if (oldLHS == *lhs_ || oldRHS == rhs) {
        directstep(0, 1);
        return;
    }
    const Value s = (oldRHS - rhs) / (oldLHS - *lhs_);
    const Value q = s.toDouble() == 1.0 ? Value(0.0) : (0.0 - s) / (1.0 - s);
    oldLHS = *lhs_;
    *lhs_ = q * *lhs_ + (1.0 - q) * rhs;
}

double Assignment::delta() const {
    return std::fabs((rhs - oldLHS).toDouble()) / (std::fabs(((rhs + oldLHS) * 0.5).toDouble()) + 1.0);
}
