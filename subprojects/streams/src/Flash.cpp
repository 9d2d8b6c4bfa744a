#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMassMolar.h>
#include <tarvo/streams/Flash.h>
#include <tarvo/streams/FlashStart.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <sstream>

using Tarvo::Utility::FlashMode;
using Tarvo::Utility::ScalingMode;
using Tarvo::Utility::SmartEnumerator;

namespace {
constexpr int verbosityFile = -1;
} // namespace

Flash::Flash(std::string name)
    : ObjectiveNleAd(std::move(name)), fluidZ_(NCOMPONENTS, zero), solidX_(NCOMPONENTS, zero) {
    evaluateInBlocks();
}

void Flash::unsupportedMode(const std::string& function, const FlashMode& fm) const {
    throw ErrorSmartEnum(function, "Flash mode", SmartEnumerator<FlashMode>::item(fm).name());
}

void Flash::setFlash_(const FlashMode& fm, const Value& a, const Value& b, bool) {
    switch (fm) {
    case FlashMode::PT:
        Pset = a;
        Tset = b;
        break;
    case FlashMode::PH:
        Pset = a;
        Hset = b;
        break;
    case FlashMode::RH:
        rhoset = a;
        Hset = b;
        break;
    case FlashMode::RT:
        rhoset = a;
        Tset = b;
        break;
    case FlashMode::PS:
        Pset = a;
        Sset = b;
        break;
    default: unsupportedMode(TARVO_FUNCTION, fm);
    }
    flashMode = fm;
}

void Flash::addUnknowns() {
    // T stays inside the global limits by the scaling itself; P only has to stay positive, and its range
    // here sets the scale, not a bound.
    addUnknown(&T, Scaler(ScalingMode::arctangentExclusive, Tmin.toDouble(), Tmax.toDouble(), 1.0, 10.0), "T");
    addUnknown(&P, Scaler(ScalingMode::log, 1.0, 101325.0, 1.0, 10.0), "P");
    int i = 0;
    for (const auto& [unknown, scaler] : betas()) addUnknown(unknown, scaler, "beta[" + std::to_string(i++) + "]");
    // A reduced density stays positive on a logarithmic scale, from a dilute gas to a dense liquid.
    for (Value* density : densityUnknowns())
        addUnknown(density, Scaler(ScalingMode::log, 1e-6, 1.0, 1.0, 10.0), "beta[" + std::to_string(i++) + "]");
}

void Flash::ensureUnknowns() {
    if (unknownsAdded_) return;
    unknownsAdded_ = true;
    addUnknowns();
}

int Flash::calculateResiduals(std::vector<Value>& y, uint32_t offset) {
    prepare_residuals();
    if (zeroFlow) return zero_residuals(y, offset);
    const int n = calculateResidualsEquilibrium(y, offset + 2);
    y[offset] = calculateResidualsFlashMode();
    y[offset + 1] = calculateResidualsPressure();
    const int eos = calculateResidualsEos(y, offset + 2 + n);
    return n + eos + 2;
}

Value Flash::calculateResidualsPressure() {
    switch (flashMode) {
    case FlashMode::RH:
    case FlashMode::RT: return P / P0 - calculateTotalP(rhoset) / P0;
    // Entropy and vapor fraction leave the pressure free: the entropy takes its equation.
    case FlashMode::SA: return (calculateTotalS() - Sset) / R;
    default: return P / P0 - Pset / P0;
    }
}

Value Flash::calculateResidualsFlashMode() {
    static const Value RT0 = R * T0;
    switch (flashMode) {
    case FlashMode::PH:
    case FlashMode::RH: return (calculateTotalH() - Hset) / RT0;
    case FlashMode::PT:
    case FlashMode::RT: return (Tset - T) * 1000.0 / T0;
    case FlashMode::PS: return (calculateTotalS() - Sset) / R;
    default: unsupportedMode(TARVO_FUNCTION, flashMode);
    }
}

int Flash::solveFlash(bool simultaneous, bool noFlow) {
    zeroFlow = noFlow;
    if (simultaneous) return 0;
    ensureUnknowns();
    if (!solver_) solver_ = std::make_unique<SolverNleRecipesAutomatic>(static_cast<int>(size()), this);
    solver_->resize(static_cast<int>(size()));
    solver_->setTolerances(0, 0, tolerance, 0);
    // Without flow any state will do: the residuals are switched off, and the unknowns stay.
    int status = 0;
    if (!zeroFlow) {
        switch (FlashStart(*this).run()) {
        case FlashStart::Result::temperatureOutside: status = temperatureOutside; break;
        case FlashStart::Result::pressureOutside: status = pressureOutside; break;
        default: break;
        }
    }
    if (status == 0) {
        init(solver_->x());
        status = solver_->solve();
    }
    if (status == 0) status = rangeStatus(P, T);
    solved_ = status == 0;
    TARVO_LOG(3) << "Flash " << name() << " ended with status " << status << " after " << solver_->iterations()
                 << " iterations";
    return status;
}

std::string Flash::statusText(int status) const {
    std::ostringstream text;
    if (status == temperatureOutside)
        text << "temperature outside the range of " << Tmin.toDouble() << " K to " << Tmax.toDouble() << " K";
    else if (status == pressureOutside)
        text << "pressure outside the range of " << Pmin.toDouble() << " Pa to " << Pmax.toDouble() << " Pa";
    else
        return solver_ ? solver_->statusText(status) : "no solve has run";
    return text.str();
}

bool Flash::inRange(const Value& v, const Value& lo, const Value& hi) {
    return v.toDouble() >= lo.toDouble() && v.toDouble() <= hi.toDouble();
}

int Flash::rangeStatus(const Value& P, const Value& T) {
    if (!inRange(T, Tmin, Tmax)) return temperatureOutside;
    if (!inRange(P, Pmin, Pmax)) return pressureOutside;
    return 0;
}

void Flash::settle(const Value& Pnew, const Value& Tnew) {
    P = Pnew;
    T = Tnew;
    prepare_residuals();
    // The phases' compositions are in place now; their properties follow the densities settled there.
    if (settleDensities()) prepare_residuals();
}

void Flash::estimate(const Value& Pstart, const Value& Tstart) {
    switch (flashMode) {
    case FlashMode::PT:
        P = Pset;
        T = Tset;
        break;
    case FlashMode::PA:
    case FlashMode::PH:
    case FlashMode::PS:
        P = Pset;
        T = Tstart;
        break;
    case FlashMode::RT:
        P = Pstart;
        T = Tset;
        break;
    default:
        P = Pstart;
        T = Tstart;
    }
    estimateEos(P, T);
    estimateEquilibrium(P, T);
}

const Value& Flash::Fraction(const PhaseIndex&, bool) const { return one; }

Vector Flash::X(const PhaseIndex& index) const {
    const auto* phase = dynamic_cast<const Phase::MassMolar*>(findPhase(index));
    if (!phase) return Vector(NCOMPONENTS, zero);
    return phase->x.value();
}

void Flash::calculateInertSolids(const Vector& z) {
    fluidZ_.assign(NCOMPONENTS, zero);
    solidX_.assign(NCOMPONENTS, zero);
    Value fluid = 0.0, solid = 0.0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (components[i]->isSolid()) {
            solidX_[i] = z[i];
            solid += z[i];
        } else {
            fluidZ_[i] = z[i];
            fluid += z[i];
        }
    }
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (fluid.toDouble() > 0) fluidZ_[i] /= fluid;
        if (solid.toDouble() > 0) solidX_[i] /= solid;
    }
    const Value total = fluid + solid;
    solidShare_ = total.toDouble() > 0 ? solid / total : zero;
}
