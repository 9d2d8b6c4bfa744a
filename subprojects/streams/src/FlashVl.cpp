#include <tarvo/components/ListComponents.h>
#include <tarvo/streams/FlashVl.h>
#include <tarvo/utility/Log.h>

#include <algorithm>
#include <cmath>
#include <limits>

using Tarvo::Utility::FlashMode;
using Tarvo::Utility::ScalingMode;

namespace {
constexpr int verbosityFile = -1;
constexpr double epsilon = std::numeric_limits<double>::epsilon();
} // namespace

FlashVl::FlashVl(std::string name)
    : Flash(std::move(name)), kVL_(NCOMPONENTS, one), x(NCOMPONENTS, zero), y(NCOMPONENTS, zero) {}

void FlashVl::addUnknowns() {
    Flash::addUnknowns();
    // alfa has to leave [0, 1] when a phase disappears, so its scaling is linear and unbounded.
    addUnknown(&alfa_, Scaler(ScalingMode::linear, 0.0, 1.0, 1.0, 100.0), "alfa");
}

void FlashVl::hardclipalfa(Value& a) {
    // Constant beyond the ends: the split doesn't move there, and derivatives that said it did made
    // Newton creep back from an overshoot by a few per cent of the distance per iteration.
    if (a.toDouble() < 0) a = 0.0;
    if (a.toDouble() > 1) a = 1.0;
}

void FlashVl::computealfaminmax(const Vector& z) {
    alfamin_ = 0;
    alfamax_ = 1;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const double zc = std::min(z[i].toDouble(), 1.0);
        if (!(zc > 0)) continue;
        const double K = kVL_[i].toDouble();
        if (K < 1)
            alfamax_ = std::min(alfamax_, (zc - 1) / (K - 1));
        else
            alfamin_ = std::max(alfamin_, (K * zc - 1) / (K - 1));
    }
    if (std::isnan(alfamin_)) alfamin_ = 0;
    if (std::isnan(alfamax_)) alfamax_ = 1;
    if (alfamin_ > alfamax_)
        TARVO_LOG(3) << "inconsistency: alfamin_ = " << alfamin_ << " should be <= alfamax_ = " << alfamax_;
    alfamax_ = std::clamp(alfamax_, 0.0, 1.0);
    alfamin_ = std::clamp(alfamin_, 0.0, 1.0);
    if (alfamax_ - alfamin_ < 10000 * epsilon) {
        const double c = std::min(alfamin_, alfamax_) - 5000 * epsilon;
        alfamin_ = c;
        alfamax_ = std::max(alfamax_, c) + 5000 * epsilon;
    }
}

void FlashVl::calculateSplit(const Vector& z) {
    sumKz.clear();
    sumzK.clear();
    sumx.clear();
    sumy.clear();
    computealfaminmax(z);
    alfaClipped = alfa_;
    hardclipalfa(alfaClipped);
    const bool counting = flashMode != FlashMode::PA;
    const double alfa = alfaClipped.toDouble();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const Value& K = kVL_[i];
        if (!(z[i].toDouble() > 0)) {
            x[i] = 0.0;
            y[i] = 0.0;
        } else if (!(K.toDouble() > 0)) {
            // Cannot be in the vapor.
            y[i] = 0.0;
            x[i] = z[i] / (1.0 - alfaClipped + epsilon);
            if (counting) {
                sumKz += K * z[i];
                sumzK += z[i] / (K + epsilon);
            }
        } else {
            // Two forms of one number, each free of cancellation where it is used.
            if (alfa > 0.5 || K.toDouble() >= 1)
                denominator = fabs((1.0 - alfaClipped) + alfaClipped * K);
            else
                denominator = 1.0 + alfaClipped * (K - 1.0);
            x[i] = z[i] / denominator;
            y[i] = K * x[i];
            if (counting) {
                sumKz += K * z[i];
                sumzK += z[i] / K;
            }
        }
        sumx += x[i];
        sumy += y[i];
    }
}

Value FlashVl::calculateResidualsRrg() {
    Value res = 0.0;
    bool nontrivial = false;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!(x[i].toDouble() + y[i].toDouble() > 0)) continue;
        const double K = kVL_[i].toDouble();
        if (K > 0) {
            res += y[i] - x[i];
            if (std::fabs(K - 1) > std::sqrt(epsilon)) nontrivial = true;
        } else {
            res -= x[i];
        }
    }
    if (flashMode == FlashMode::PA) return res;
    const double kz = sumKz.toDouble(), zk = sumzK.toDouble();
    if (zk <= 1 && kz > 1)
        res -= 1.0 - sumzK; // superheated
    else if (zk > 1 && kz <= 1)
        res -= sumKz - 1.0; // subcooled
    // All K equal to 1: a zero with the derivatives of alfa keeps the Jacobian regular.
    if (!nontrivial) res.active() += alfa_.active() - alfa_.toDouble();
    // The penalty that pins alfa to its range. The residual falls as alfa rises, and the penalty keeps it
    // falling beyond either end: a penalty of the other sign above alfamax can cancel the residual there and
    // make a false root, as it does for a pure component below its boiling point.
    if (alfa_.toDouble() > alfamax_) {
        const Value c = alfa_ - alfamax_;
        res -= (1.0 + fabs(res)) * c * c;
    } else if (alfa_.toDouble() < alfamin_) {
        const Value c = alfamin_ - alfa_;
        res += (1.0 + fabs(res)) * c * c;
    }
    return res;
}

void FlashVl::estimate(const Value& P, const Value& T) {
    fillkvl(P, T, true);
    Flash::estimate(P, T);
}

void FlashVl::estimateEquilibrium(const Value& P, const Value& T) {
    if (flashMode == FlashMode::PA || flashMode == FlashMode::SA) {
        alfa_ = alfaset;
    } else {
        fillkvl(P, T, true);
        computealfaminmax(splitComposition());
        alfa_ = (alfamin_ + alfamax_) * 0.5;
    }
    calculateSplit(splitComposition());
    TARVO_LOG(3) << "Done estimating alfa = " << alfa_.toDouble();
}

int FlashVl::calculateResidualsEquilibrium(std::vector<Value>& residuals, uint32_t offset) {
    residuals[offset] = calculateResidualsRrg();
    return 1;
}

const Value& FlashVl::Fraction(const PhaseIndex& index, bool clipped) const {
    const Value& vapor = clipped ? alfaClipped : alfa_;
    if (index == vaporIndex) return vapor;
    if (index == liquidIndex) {
        liquidFraction = 1.0 - vapor;
        return liquidFraction;
    }
    return zero;
}

Vector FlashVl::X(const PhaseIndex& index) const {
    if (index == vaporIndex) return y;
    if (index == liquidIndex) return x;
    return Flash::X(index);
}
