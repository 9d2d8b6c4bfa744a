#include <tarvo/components/ListComponents.h>
#include <tarvo/core/AndersonAcceleration.h>
#include <tarvo/phases/PhaseIdeal.h>
#include <tarvo/streams/StreamTwo.h>
#include <tarvo/utility/Log.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>
#include <typeinfo>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::FlashMode;
using Tarvo::Utility::PhaseIndex;
using Tarvo::Utility::PhaseType;

namespace {
constexpr int verbosityFile = -1;
// The successive substitution of a start: a few digits of the K values, which the solve then completes;
// near a critical point it converges slowly, and the solve takes over from where it stopped.
constexpr int maxSubstitutions = 30;
constexpr double substitutionTolerance = 1e-5;
// The steps of ln K are accelerated (Anderson) once they are below this, where the map is close to linear,
// combining the changes of the last few: a natural gas in its two-phase region then takes 6 steps to the
// tolerance, where the extrapolation of the dominant eigenvalue took 7, and 2 more to the closing one, where
// that extrapolation gained a factor of about 3 per step.
constexpr double accelerateBelow = 0.1;
constexpr unsigned memory = 3;
// In numbers a step is cheap beside the solve's Jacobian: past the tolerance, steps in numbers go on to the
// closing tolerance, at which the next change is a few rounding errors in ln K and the solve finds its start
// converged, as long as each shrinks the change by fastShrink at least.
constexpr double closingTolerance = 1e-10;
constexpr double fastShrink = 0.1;

bool idealModel(const Phase::Generic& phase) {
    const auto& model = phase.model(); // a call inside typeid draws a side-effect warning from clang
    return typeid(model) == typeid(Phase::Ideal);
}
} // namespace

template <typename F>
StreamTwo<F>::StreamTwo(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
                        Persistent* root, bool withSolid)
    : Model(defaults, id, persistency, parent, root), Stream(defaults, id, persistency, parent, root),
      embeddedTypePhase0("embeddedTypePhase[0]", withSolid ? "type of the embedded fluid phase" : "phase type for phase 1",
                         retrieveString(defaults, id, persistency, "embeddedTypePhase[0]",
                                        std::is_same_v<F, FlashLlTx> ? "PhaseIdeal<liquid>" : "PhaseIdeal<vapor>"),
                         this),
      embeddedTypePhase1("embeddedTypePhase[1]", withSolid ? "type of the embedded fluid phase" : "phase type for phase 2",
                         retrieveString(defaults, id, persistency, "embeddedTypePhase[1]", "PhaseIdeal<liquid>"), this) {
    addVariable(embeddedTypePhase0);
    addVariable(embeddedTypePhase1);
    const bool liquids = std::is_same_v<F, FlashLlTx>;
    addTotalPhase("PhaseTotal", persistency);
    first_ = my_cast<Phase::Generic*>(addPhase(embeddedTypePhase0.value(), liquids ? "L1phase" : "Vphase",
                                               liquids ? "First liquid phase" : "Vapor phase", persistency,
                                               this->vaporIndex),
                                      "StreamTwo::StreamTwo");
    second_ = my_cast<Phase::Generic*>(addPhase(embeddedTypePhase1.value(), liquids ? "L2phase" : "Lphase",
                                                liquids ? "Second liquid phase" : "Liquid phase", persistency,
                                                this->liquidIndex),
                                       "StreamTwo::StreamTwo");
    if (liquids) {
        first_->setType(PhaseType::liquid);
        second_->setType(PhaseType::liquid);
    }
    if (withSolid)
        solid_ = my_cast<Phase::Generic*>(
            addPhase("PhaseIdeal<solid>", "Sphase", "Solid phase", persistency, PhaseIndex::solid1),
            "StreamTwo::StreamTwo");
    this->isIdeal = idealModel(*first_) && idealModel(*second_);
}

template <typename F> const Vector& StreamTwo<F>::splitComposition() const {
    if (solid_) return this->fluidZ_;
    return static_cast<const Phase::MassMolar&>(*Tphase).x.value();
}

template <typename F> void StreamTwo<F>::initializeNonPersistents() {
    Stream::initializeNonPersistents();
    FlashBase::T = T;
    FlashBase::P = P;
    TARVO_LOG(3) << "Initializing KVLs";
    first_->prepare(T);
    second_->prepare(T);
    estimateFlash();
}

template <typename F> void StreamTwo<F>::pushSplit_(bool properties) {
    for (int i = 0; i < NCOMPONENTS; ++i) {
        first_->x[i] = this->y[i];
        second_->x[i] = this->x[i];
    }
    first_->prepare(FlashBase::T);
    second_->prepare(FlashBase::T);
    if (!properties) return;
    first_->fraction = Fraction(this->vaporIndex, true);
    second_->fraction = Fraction(this->liquidIndex, true);
    first_->calculateProperties(FlashBase::P, FlashBase::T, true);
    second_->calculateProperties(FlashBase::P, FlashBase::T, true);
    if (solid_) {
        for (int i = 0; i < NCOMPONENTS; ++i) solid_->x[i] = this->solidX_[i];
        solid_->fraction = this->solidShare_;
        solid_->calculateProperties(FlashBase::P, FlashBase::T, true);
    }
}

template <typename F> void StreamTwo<F>::prepare_residuals() {
    TARVO_LOG(4) << "Now prepare residuals for phase " << fullTag();
    // The solids first: the K values are those of the fluid part.
    if (solid_) this->calculateInertSolids(static_cast<const Phase::MassMolar&>(*Tphase).x.value());
    this->prepare_Flash_residuals();
    this->calculateSplit(splitComposition());
    pushSplit_(residualsNeedProperties());
}

template <typename F> void StreamTwo<F>::placeSplit_(const Value& P, const Value& T, const double* fraction) {
    FlashBase::P = P;
    FlashBase::T = T;
    if (solid_) this->calculateInertSolids(static_cast<const Phase::MassMolar&>(*Tphase).x.value());
    this->fillkvl(P, T, true);
    splitAt_(fraction);
    if (!this->isIdeal) substitute_(fraction);
    pushSplit_(false);
    this->settleDensities();
}

template <typename F> void StreamTwo<F>::splitAt_(const double* fraction) {
    if (fraction)
        this->alfa_ = *fraction;
    else
        this->solveSplit(splitComposition());
    this->calculateSplit(splitComposition());
}

template <typename F> void StreamTwo<F>::substitute_(const double* fraction) {
    AndersonAcceleration acceleration(NCOMPONENTS, memory);
    std::vector<Value> lnK(NCOMPONENTS);
    std::vector<double> current(NCOMPONENTS, 0.0), image(NCOMPONENTS, 0.0), next(NCOMPONENTS, 0.0);
    std::vector<double> liquid(NCOMPONENTS), vapor(NCOMPONENTS), lnphiL, lnphiV;
    const double P = FlashBase::P.toDouble(), T = FlashBase::T.toDouble();
    double lastChange = std::numeric_limits<double>::infinity();
    for (int k = 0; k < maxSubstitutions; ++k) {
        // Without derivatives to carry, phases that have ln phi in closed form give it in numbers; the
        // phases' Values follow the split once, when the substitution ends.
        bool numbers = Active::numdir() == 0;
        if (numbers) {
            for (int i = 0; i < NCOMPONENTS; ++i) {
                liquid[i] = this->x[i].toDouble();
                vapor[i] = this->y[i].toDouble();
            }
            numbers = second_->lnPhiInNumbers(P, T, liquid, lnphiL) && first_->lnPhiInNumbers(P, T, vapor, lnphiV);
        }
        if (!numbers) {
            pushSplit_(false);
            this->settleDensities();
            second_->preparefugacity(FlashBase::P, FlashBase::T);
            first_->preparefugacity(FlashBase::P, FlashBase::T);
        }
        double change = 0;
        for (int i = 0; i < NCOMPONENTS; ++i) {
            if (components[i]->isSolid()) continue;
            lnK[i] = numbers ? Value(lnphiL[i] - lnphiV[i]) : second_->fugacity(i) - first_->fugacity(i);
            current[i] = std::log(this->kVL_[i].toDouble());
            image[i] = lnK[i].toDouble();
            change = std::max(change, std::fabs(image[i] - current[i]));
        }
        // Far from the solution the steps are no linear map's: plain steps until they are small, and again
        // after one that grew.
        if (!(change < accelerateBelow) || !(change < lastChange)) acceleration.restart();
        acceleration.next(current, image, next);
        for (int i = 0; i < NCOMPONENTS; ++i) {
            if (components[i]->isSolid()) continue;
            this->kVL_[i] = exp(lnK[i] + (next[i] - image[i])); // the derivatives are the plain step's
        }
        splitAt_(fraction);
        if (!(change > substitutionTolerance) &&
            (!numbers || !(change > closingTolerance) || !(change < fastShrink * lastChange)))
            break;
        lastChange = change;
    }
}

// The phases' properties only where the searches and the residuals read them, as prepare_residuals does: a
// PT or PA start would compute them for nothing, and the stream computes its own after the solve. The
// split is in the phases already.
template <typename F> void StreamTwo<F>::settle(const Value& P, const Value& T) {
    placeSplit_(P, T, nullptr);
    if (residualsNeedProperties()) pushSplit_(true);
}

template <typename F> void StreamTwo<F>::settleAt(const Value& P, const Value& T, double fraction) {
    placeSplit_(P, T, &fraction);
    if (residualsNeedProperties()) pushSplit_(true);
}

template <typename F> Value StreamTwo<F>::boundaryResidualAt(const Value& P, const Value& T, double fraction) {
    placeSplit_(P, T, &fraction);
    return this->boundaryResidual();
}

template <typename F> void StreamTwo<F>::updateFlash() {
    pushSplit_(false);
    // The shares that conserve every component with the phases' compositions normalised.
    const double fluid = solid_ ? 1.0 - this->solidShare_.toDouble() : 1.0;
    first_->fraction = this->conservedFraction(this->vaporIndex).toDouble() * fluid;
    second_->fraction = this->conservedFraction(this->liquidIndex).toDouble() * fluid;
    if (solid_) {
        for (int i = 0; i < NCOMPONENTS; ++i) solid_->x[i] = this->solidX_[i].toDouble();
        solid_->fraction = this->solidShare_.toDouble();
    }
    TARVO_LOG(3) << "Vphase->fraction = " << first_->fraction.toDouble();
    Stream::updateFlash();
}

template <typename F> void StreamTwo<F>::setFlash(const FlashMode& fm) {
    if (fm == FlashMode::PA)
        this->setFlash_(fm, P, first_->fraction, true);
    else if (fm == FlashMode::SA)
        this->setFlash_(fm, static_cast<Phase::MassMolarProperties&>(*Tphase).S, first_->fraction, true);
    else
        Stream::setFlash(fm);
}

template <typename F> void StreamTwo<F>::estimateFlash() {
    this->sumx.clear();
    this->sumy.clear();
    for (int i = 0; i < NCOMPONENTS; ++i) {
        this->x[i] = second_->x[i];
        this->y[i] = first_->x[i];
        this->sumx += this->x[i];
        this->sumy += this->y[i];
    }
    first_->prepare(FlashBase::T);
    second_->prepare(FlashBase::T);
    if (!this->isIdeal) {
        second_->preparefugacity(FlashBase::P, FlashBase::T);
        first_->preparefugacity(FlashBase::P, FlashBase::T);
    }
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (components[i]->isSolid())
            this->kVL_[i] = 1e-100;
        else if (this->isIdeal)
            this->kVL_[i] = components[i]->kvli(FlashBase::T, FlashBase::P);
        else
            this->kVL_[i] = exp(second_->fugacity(i) - first_->fugacity(i));
    }
}

template <typename F> void StreamTwo<F>::estimateEquilibrium(const Value& Pstart, const Value& Tstart) {
    if (solid_) this->calculateInertSolids(static_cast<const Phase::MassMolar&>(*Tphase).x.value());
    F::estimateEquilibrium(Pstart, Tstart);
}

template <typename F> void StreamTwo<F>::precompute_isIdeal() {
    this->isIdeal = true;
    this->prepare_Flash_residuals();
    this->solveFlash(false, std::fabs(Tphase->totalFlow().toDouble()) <= 2.220446049250313e-14);
    this->isIdeal = false;
}

template <typename F> const Value& StreamTwo<F>::Fraction(const PhaseIndex& index, bool clipped) const {
    if (!solid_) return F::Fraction(index, clipped);
    if (index == PhaseIndex::solid1) return this->solidShare_;
    scaledFraction_ = F::Fraction(index, clipped) * (1.0 - this->solidShare_);
    return scaledFraction_;
}

template <typename F> Vector StreamTwo<F>::X(const PhaseIndex& index) const {
    if (solid_ && index == PhaseIndex::solid1) return this->solidX_;
    return F::X(index);
}

template class StreamTwo<FlashVl>;
template class StreamTwo<FlashVlT>;
template class StreamTwo<FlashVlTx>;
template class StreamTwo<FlashLlTx>;
template class StreamTwoSolid<FlashVlT>;
template class StreamTwoSolid<FlashVlTx>;
