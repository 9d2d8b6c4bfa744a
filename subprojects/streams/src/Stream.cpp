#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/phases/Total.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/utility/CachedCast.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <cassert>
#include <cmath>
#include <limits>

using Tarvo::Persistency::Defaults;
using Tarvo::Utility::FlashMode;
using Tarvo::Utility::MassBalanceMode;
using Tarvo::Utility::PhaseIndex;
using Tarvo::Utility::PhaseType;
using Tarvo::Utility::SmartEnumerator;

namespace {
constexpr int verbosityFile = -1;
constexpr double epsilon = std::numeric_limits<double>::epsilon();

[[noreturn]] void unsupportedFlashMode(const std::string& function, const FlashMode& fm) {
    throw ErrorSmartEnum(function, "Flash mode", SmartEnumerator<FlashMode>::item(fm).name());
}

// Every evaluation of a stream casts its phases.
Phase::MassMolarProperties& withProperties(Phase::Mass* phase, const char* signature) {
    return *my_cast_in<Phase::MassMolarProperties*>(phase, signature);
}
} // namespace

Stream::Stream(const Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent, Persistent* root)
    : Model(defaults, id, persistency, parent, root), EdgeBase(defaults, id, persistency, parent, root) {
    addVariable(T);
    addVariable(P);
    addVariable(NITER_NLEFlash);
    addVariable(flowoption);
    addVariable(flashoption);
}

void Stream::addTotalPhase(const std::string& type, Persistency* persistency) {
    Tphase = addPhase(type, "Tphase", "Total phase", persistency, PhaseIndex::null);
    if (auto* total = dynamic_cast<Phase::Total*>(Tphase)) total->setStream(this);
}

Phase::Mass* Stream::addPhase(const std::string& type, const std::string& tag, const std::string& description,
                              Persistency* persistency, const PhaseIndex& index) {
    return registerPhase_(persistency ? child(tag) : addChild(type, Defaults(tag, description)), index);
}

Phase::Mass* Stream::registerPhase_(Node& node, const PhaseIndex& index) {
    auto* phase = my_cast<Phase::Mass*>(&node, "Stream::addPhase");
    if (index != PhaseIndex::null) phasesmap[index] = static_cast<int>(phases_.size());
    indexintegers_.push_back(static_cast<int>(index));
    phases_.push_back(phase);
    if (auto* generic = dynamic_cast<Phase::Generic*>(phase))
        if (auto* eos = dynamic_cast<Phase::EosInterface*>(&generic->model())) eosPhases_.emplace_back(generic, eos);
    return phase;
}

Phase::Mass* Stream::addTypedPhase(const std::string& type, const std::string& description,
                                   Persistency* persistency) {
    static const std::vector<std::pair<std::string, PhaseIndex>> places{
        {"Vphase", PhaseIndex::vapor}, {"Lphase", PhaseIndex::liquid1}, {"Sphase", PhaseIndex::solid1}};
    if (persistency) {
        for (const auto& [tag, index] : places)
            if (hasChild(tag) && findPhaseIndex(index) < 0) return registerPhase_(child(tag), index);
        throw ErrorRunTime(TARVO_FUNCTION, "no stored phase for " + type + " in " + tag());
    }
    // The type is known only once the phase exists: it is made under a provisional tag.
    auto* phase = my_cast<Phase::Mass*>(&addChild(type, Defaults("phase", description)), TARVO_FUNCTION);
    const auto& [tag, index] = places.at(static_cast<std::size_t>(phase->phaseType()) - 1);
    renameChild("phase", tag);
    return registerPhase_(child(tag), index);
}

Phase::Mass* Stream::findPhase(const PhaseIndex& index) const {
    const int i = findPhaseIndex(index);
    return i < 0 ? nullptr : phases_[i];
}

int Stream::findPhaseIndex(const PhaseIndex& index) const {
    const auto it = phasesmap.find(index);
    return it == phasesmap.end() ? -1 : it->second;
}

PhaseIndex Stream::phaseIndex(const Phase::Mass& phase) const {
    for (std::size_t i = 0; i < phases_.size(); ++i)
        if (phases_[i] == &phase) return static_cast<PhaseIndex>(indexintegers_[i]);
    return PhaseIndex::null;
}

void Stream::setphase(const PhaseIndex& index) {
    for (std::size_t i = 0; i < phases_.size(); ++i) {
        if (phases_[i] == Tphase) continue;
        phases_[i]->fraction = indexintegers_[i] == static_cast<int>(index) ? 1.0 : 0.0;
    }
}

int Stream::numberOfPhases(const PhaseType& type) const {
    if (type == PhaseType::null || static_cast<std::size_t>(type) > SmartEnumerator<PhaseType>().size())
        throw ErrorSmartEnum(TARVO_FUNCTION, "PhaseType", SmartEnumerator<PhaseType>::item(type).name());
    int n = 0;
    for (const Phase::Mass* phase : phases_)
        if (phase != Tphase && phase->phaseType() == type) ++n;
    return n;
}

void Stream::initializeNonPersistents() {
    for (Phase::Mass* phase : phases_) phase->initializeNonPersistents();
}

bool Stream::hasProperties() const {
    return Tarvo::Utility::cachedCast<const Phase::MassMolarProperties*>(Tphase) != nullptr;
}

FlashMode Stream::flashOptionMode() const {
    if (flashoption.value().empty()) return FlashMode::PT;
    return SmartEnumerator<FlashMode>::value(flashoption.value());
}

MassBalanceMode Stream::flowOptionMode() const {
    if (flowoption.value().empty()) return static_cast<MassBalanceMode>(Tphase->representation());
    return SmartEnumerator<MassBalanceMode>::value(flowoption.value());
}

void Stream::setFlashOption(const FlashMode& fm) { flashoption.value() = SmartEnumerator<FlashMode>::item(fm).name(); }

void Stream::setFlowOption(const MassBalanceMode& mode) {
    flowoption.value() = SmartEnumerator<MassBalanceMode>::item(mode).name();
}

void Stream::setFlash(const FlashMode& fm) {
    switch (fm) {
    case FlashMode::PT: flash().setFlash_(fm, P, T, true); break;
    case FlashMode::PH: flash().setFlash_(fm, P, withProperties(Tphase, __PRETTY_FUNCTION__).H, true); break;
    case FlashMode::PS: flash().setFlash_(fm, P, withProperties(Tphase, __PRETTY_FUNCTION__).S, true); break;
    case FlashMode::RH: {
        auto& total = withProperties(Tphase, __PRETTY_FUNCTION__);
        flash().setFlash_(fm, total.rho / total.mw, total.H, true);
        break;
    }
    case FlashMode::RT: {
        auto& total = withProperties(Tphase, __PRETTY_FUNCTION__);
        flash().setFlash_(fm, total.rho / total.mw, T, true);
        break;
    }
    default: unsupportedFlashMode(TARVO_FUNCTION, fm);
    }
}

void Stream::updateFlash() {
    switch (flashMode) {
    case FlashMode::PT: break;
    case FlashMode::PA:
    case FlashMode::PH:
    case FlashMode::PS: T = FlashBase::T; break;
    case FlashMode::RH:
    case FlashMode::SA:
        P = FlashBase::P;
        T = FlashBase::T;
        break;
    case FlashMode::RT: P = FlashBase::P; break;
    default: unsupportedFlashMode(TARVO_FUNCTION, flashMode);
    }
}

void Stream::go(SolutionMode mode, int) {
    const bool cut = isCut();
    TARVO_LOG(3) << "Entered for " << fullTag() << " with flowoption = " << flowoption.value()
                 << ", flashoption = " << flashoption.value() << " and cut mode = " << (cut ? "true" : "false");
    resetErrors();
    const MassBalanceMode balance =
        cut ? Phase::flowonly(static_cast<MassBalanceMode>(Tphase->representation())) : flowOptionMode();
    // The balance first: a density specification is turned into a molar one by the molecular weight.
    Tphase->calculateX(balance);
    setFlash(cut ? (hasProperties() ? FlashMode::PH : FlashMode::PT) : flashOptionMode());
    // Every sequential calculation starts from an estimate at the items' state, not only the first: a start
    // left on the other side of a phase boundary converges slowly.
    if (mode < simultaneous) flash().estimate(P, T);
    TARVO_LOG(3) << "Now setting Flash variables";
    // The ideal solve gives the searches of a non-ideal flash the temperature or pressure they start from;
    // at a given pressure and temperature there is nothing to search, and its split would be overwritten.
    if (!flash().isIdeal && flash().flashMode != FlashMode::PT) precompute_isIdeal();
    const bool noFlow = std::fabs(Tphase->totalFlow().toDouble()) <= 100 * epsilon;
    int status = flash().solveFlash(mode == simultaneous, noFlow);
    // A simultaneous solve sets the state itself; outside the range it is no state of the models either.
    if (mode == simultaneous && status == 0) status = Flash::rangeStatus(P, T);
    // A specification without a state in the range leaves the stream's state as it was: no number of the
    // search, and no clipped one, stands for a result.
    const bool outside = status == Flash::temperatureOutside || status == Flash::pressureOutside;
    // A solved flash leaves its phases at the stream's composition; a simultaneous step does not solve it, so
    // the phases are brought to the present composition here, or every property that a unit downstream
    // reads in this evaluation would be that of the last one. Inside the range their properties are worked
    // out below, at the stream's state.
    if (mode == simultaneous) outside ? prepare_residuals() : prepareComposition();
    if (!outside) updateFlash();
    // The flash divides the total among its phases and leaves the total's flows, balanced above, as they are.
    phasesOfTotal_();
    // The property models do not reach outside the range, and their numbers there would be no results.
    if (!outside) calculatePhaseProperties();
    if (mode < simultaneous) NITER_NLEFlash.value() = flash().iterations();
    if (status == 0) {
        countCalculation();
        return;
    }
    if (outside) {
        reportError(flash().statusText(status));
        return;
    }
    // A solve that stopped short of its tolerance is a failure, whatever the solver calls it.
    if (status < 0)
        reportWarning(flash().statusText(status));
    else
        reportError(flash().statusText(status));
    reportError("Flash convergence failure in stream::calculate;");
}

void Stream::calculateX(const MassBalanceMode& mode) {
    Tphase->calculateX(mode);
    prepare_residuals();
    updateFlash();
    // Neither step changes the total's flows: its balance stands, and a second one would only cost time.
    phasesOfTotal_();
}

void Stream::calculateXnoFlash(const MassBalanceMode& mode) {
    Tphase->calculateX(mode);
    phasesOfTotal_();
}

void Stream::phasesOfTotal_() {
    const double flow = Tphase->totalFlow().toDouble();
    if (flow < -1000 * epsilon)
        reportError("negative material flow");
    else if (std::fabs(flow) <= 1000 * epsilon)
        reportWarning("zero material flow");
    const int n = nphases();
    for (Phase::Mass* phase : phases_) {
        if (phase == Tphase) continue;
        if (flow == 0.0 && n > 1) phase->fraction = 1.0 / n;
        phase->totalFlow() = Tphase->totalFlow() * phase->fraction;
        phase->calculateX(static_cast<MassBalanceMode>(phase->representation()));
    }
    const double tolerance = 10 * std::sqrt(epsilon);
    double sum = 0;
    for (const Phase::Mass* phase : phases_) {
        if (phase == Tphase) continue;
        const double f = phase->fraction.toDouble();
        sum += f;
        if (f < -tolerance) reportError("negative phase fraction in Stream::calculateXnoFlash");
        if (f > 1 + tolerance) reportError("phase fraction larger than one in Stream::calculateXnoFlash");
        if (n == 1) assert(std::fabs(f - 1.0) <= tolerance);
    }
    if (sum > 1 + tolerance) reportError("sum of phase fractions exceeds one");
}

bool Stream::residualsNeedProperties() const {
    return flashMode != FlashMode::PT && flashMode != FlashMode::PA;
}

void Stream::calculatePhaseProperties() {
    if (!hasProperties()) return;
    for (Phase::Mass* phase : phases_)
        if (phase != Tphase) withProperties(phase, __PRETTY_FUNCTION__).calculateProperties(P, T, true);
    auto& total = withProperties(Tphase, __PRETTY_FUNCTION__);
    const bool enthalpyGiven = flashMode == FlashMode::PH || flashMode == FlashMode::RH;
    const bool entropyGiven = flashMode == FlashMode::PS || flashMode == FlashMode::SA;
    total.calculateProperties(P, T, !enthalpyGiven && !entropyGiven);
    // The specification stays as the user gave it, the molar enthalpy that the flash takes, and its mass form
    // follows it (a cut copy is given only the molar one); the other one follows from the phases.
    if (enthalpyGiven) {
        total.h = total.H / total.mw;
        total.S = total.calculate_S(P, T);
        total.s = total.S / total.mw;
    } else if (entropyGiven) {
        total.H = total.calculate_H(P, T);
        total.h = total.H / total.mw;
    }
    if (enthalpyGiven || entropyGiven) total.g = total.h - T * total.s;
}

void Stream::estimateEos(const Value& Pstart, const Value& Tstart) {
    for (auto& [phase, eos] : eosPhases_) eos->estimate(Pstart, Tstart, phase->x.value(), phase->phaseType());
}

int Stream::calculateResidualsEos(std::vector<Value>& y, uint32_t offset) {
    // The phases' models were set up at the flash's T and the phases' compositions by prepare_residuals.
    for (const auto& [phase, eos] : eosPhases_)
        y[offset++] = eos->calculateResiduals(FlashBase::P, FlashBase::T, phase->x.value(), phase->phaseType());
    return static_cast<int>(eosPhases_.size());
}

std::vector<Value*> Stream::densityUnknowns() {
    std::vector<Value*> unknowns;
    for (auto& [phase, eos] : eosPhases_) unknowns.push_back(&eos->beta);
    return unknowns;
}

bool Stream::settleDensities() {
    for (auto& [phase, eos] : eosPhases_)
        eos->settleDensity(FlashBase::P, FlashBase::T, phase->x.value(), phase->phaseType());
    return !eosPhases_.empty();
}

Value Stream::calculateTotalP(const Value& rho) {
    // The pressure that, at the present temperature and split, scales the stream's density to rho: for a
    // gas the answer itself, for a liquid a residual that vanishes at rho.
    return FlashBase::P * (rho / calculateTotalRho());
}

Value Stream::calculateTotalRho() {
    return withProperties(Tphase, __PRETTY_FUNCTION__).calculate_rho(FlashBase::P, FlashBase::T);
}

Value Stream::calculateTotalH() {
    return withProperties(Tphase, __PRETTY_FUNCTION__).calculate_H(FlashBase::P, FlashBase::T);
}

Value Stream::calculateTotalS() {
    return withProperties(Tphase, __PRETTY_FUNCTION__).calculate_S(FlashBase::P, FlashBase::T);
}

void Stream::scale(const Value& factor) {
    if (factor.toDouble() == 1.0) return;
    *this *= factor;
}

Stream& Stream::operator*=(const Value& factor) {
    for (Phase::Mass* phase : phases_) *phase *= factor;
    return *this;
}

Stream& Stream::operator/=(const Value& factor) { return *this *= 1.0 / factor; }

Stream& Stream::operator+=(const Stream& other) {
    const Value n1 = Tphase->totalFlow(), n2 = other.Tphase->totalFlow();
    const Value sum = n1 + n2;
    if (sum.toDouble() > 0) T = (n1 * T + n2 * other.T) / sum;
    if (other.P < P) P = other.P;
    *Tphase += *other.Tphase;
    return *this;
}

void Stream::clearComposition() { Tphase->clearComposition(flowOptionMode()); }

Value Stream::dhvl(const Value& temperature) const {
    const auto& total = *my_cast<Phase::MassMolar*>(Tphase, TARVO_FUNCTION);
    Value sum(0.0, "J/kmol");
    for (int i = 0; i < NCOMPONENTS; ++i) sum += total.x[i] * components[i]->dhvl(temperature);
    return sum;
}
