#include <tarvo/components/ListComponents.h>
#include <tarvo/core/MonotoneRoot.h>
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
    sumx.clear();
    sumy.clear();
    computealfaminmax(z);
    alfaClipped = alfa_;
    hardclipalfa(alfaClipped);
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
        } else {
            // Two forms of one number, each free of cancellation where it is used.
            if (alfa > 0.5 || K.toDouble() >= 1)
                denominator = fabs((1.0 - alfaClipped) + alfaClipped * K);
            else
                denominator = 1.0 + alfaClipped * (K - 1.0);
            x[i] = z[i] / denominator;
            y[i] = K * x[i];
        }
        sumx += x[i];
        sumy += y[i];
    }
}

namespace {
// The Rachford-Rice sum R = sum z (K - 1) / (1 + a (K - 1)) at a in [0, 1] in plain numbers, and -dR/da;
// a component that cannot be in the vapor (K <= 0) gives -z / (1 - a).
double rachfordRice(const Vector& z, const Vector& K, double a, double& slope) {
    double r = 0;
    slope = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const double zi = z[i].toDouble(), Ki = K[i].toDouble();
        if (!(zi > 0)) continue;
        const double d = Ki > 0 ? 1 + a * (Ki - 1) : 1 - a;
        const double term = (Ki > 0 ? zi * (Ki - 1) : -zi) / d;
        r += term;
        slope += term * term / zi;
    }
    return r;
}
} // namespace

void FlashVl::solveSplit(const Vector& z) {
    double slope;
    if (!(rachfordRice(z, kVL_, 0, slope) > 0)) {
        alfa_ = 0.0; // subcooled: not even the first bubble
        return;
    }
    if (!(rachfordRice(z, kVL_, 1, slope) < 0)) {
        alfa_ = 1.0; // superheated: not even the first drop
        return;
    }
    // R falls with a: its negative is the increasing function that the search wants.
    MonotoneRoot root;
    root.find(
        [&](double a) {
            double s;
            const double r = rachfordRice(z, kVL_, a, s);
            return MonotoneRoot::Sample{-r, s};
        },
        0, 1, std::clamp(alfa_.toDouble(), 0.0, 1.0), 0);
    // One Newton correction in Values: its number changes by rounding only, and its derivatives become
    // those of the root, -(dR/dK dK) / (dR/da). Without derivatives there is nothing to correct.
    alfa_ = root.x();
    if (Active::numdir() == 0) return;
    calculateSplit(z);
    alfa_ = Value(root.x()) + (sumy - sumx) / root.at().slope;
}

Value FlashVl::boundaryResidual() const {
    return log(sumy / sumx);
}

Value FlashVl::conservedFraction(const PhaseIndex& index) const {
    const Value vapor = alfaClipped * sumy, liquid = (1.0 - alfaClipped) * sumx;
    if (!((vapor + liquid).toDouble() > 0)) return Fraction(index, true); // nothing to split
    if (index == vaporIndex) return vapor / (vapor + liquid);
    if (index == liquidIndex) return liquid / (vapor + liquid);
    return zero;
}

Value FlashVl::calculateResidualsRrg() {
    if (flashMode == FlashMode::PA || flashMode == FlashMode::SA) return boundaryResidual();
    const Vector& z = splitComposition();
    Value r = 0.0, slope = 0.0;
    bool nontrivial = false;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (!(z[i].toDouble() > 0)) continue;
        const Value d = y[i] - x[i];
        r += d;
        slope += d * d / z[i];
        if (std::fabs(kVL_[i].toDouble() - 1) > std::sqrt(epsilon)) nontrivial = true;
    }
    const Value target = alfaClipped + r / (1.0 + slope);
    Value residual;
    if (target.toDouble() >= 1)
        residual = alfa_ - 1.0; // superheated
    else if (target.toDouble() <= 0)
        residual = alfa_; // subcooled
    else
        residual = alfa_ - target;
    // All K equal to 1: the split equation says nothing of alfa, and a zero with its derivatives keeps the
    // Jacobian regular.
    if (!nontrivial) residual.active() += alfa_.active() - alfa_.toDouble();
    return residual;
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
