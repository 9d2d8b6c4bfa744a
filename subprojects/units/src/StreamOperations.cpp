#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/StreamOperations.h>
#include <tarvo/utility/CachedCast.h>

#include <algorithm>
#include <cassert>

using Tarvo::Utility::PhaseIndex;
using Tarvo::Utility::PhaseType;

void copyStream(Stream& to, const Stream& from) {
    to.Node::operator=(from); // the children, that is the phases, through their own assignment
    to.T = from.T;
    to.P = from.P;
}

Tarvo::Utility::FlashMode enthalpyFlashMode(const Stream& stream) {
    return stream.hasProperties() ? Tarvo::Utility::FlashMode::PH : Tarvo::Utility::FlashMode::PT;
}

Flash& flashOf(Stream& stream) {
    auto* flash = Tarvo::Utility::cachedCast<Flash*>(stream.objective());
    assert(flash); // every stream's objective is its flash
    flash->ensureUnknowns();
    return *flash;
}

void refreshOutlet(Stream& outlet, const Tarvo::Utility::FlashMode& mode, Calculatable::SolutionMode solution,
                   int level) {
    outlet.setFlashOption(mode);
    outlet.go(solution < Calculatable::simultaneous ? solution : Calculatable::simultaneous, level);
}

Value volumeFlow(const Stream& stream) {
    static const Value waterDensity(1000.0, "kg/m3");
    if (const auto* total = Tarvo::Utility::cachedCast<const Phase::MassMolarProperties*>(stream.Tphase))
        return total->vdot;
    return stream.Tphase->mdot / waterDensity;
}

Value totalEnthalpyFlow(Stream& stream) {
    const auto& total = *my_cast<Phase::MassMolarProperties*>(stream.Tphase, "totalEnthalpyFlow");
    return total.mdot * total.h;
}

void setEnthalpyFlow(Stream& outlet, const Value& enthalpyFlow) {
    auto& total = *my_cast<Phase::MassMolarProperties*>(outlet.Tphase, "setEnthalpyFlow");
    if (total.mdot.toDouble() > 0.0) {
        total.h = enthalpyFlow / total.mdot;
        total.H = total.h * total.mw;
    }
    outlet.setFlashOption(Tarvo::Utility::FlashMode::PH);
}

void passPhases(Stream& out, const Stream& in, const std::vector<const Phase::Mass*>& phases,
                Calculatable::SolutionMode solution, int level) {
    out.T = in.T;
    out.P = in.P;
    if (phases.empty()) {
        out.scale(zero);
    } else {
        Phase::Mass& total = *out.Tphase;
        total = *phases.front();
        for (std::size_t k = 1; k < phases.size(); ++k)
            total += *phases[k];
        total.fraction = 1.0;
        const double flow = total.totalFlow().toDouble();
        for (Phase::Mass* own : out.phases()) {
            if (own == out.Tphase) continue;
            const PhaseIndex index = out.phaseIndex(*own);
            const auto match = std::find_if(phases.begin(), phases.end(),
                                            [&](const Phase::Mass* p) { return in.phaseIndex(*p) == index; });
            if (match == phases.end()) {
                *own *= zero;
                own->fraction = 0.0;
            } else {
                *own = **match;
                own->fraction = flow > 0 ? (*match)->totalFlow().toDouble() / flow : 0.0;
            }
        }
    }
    refreshOutlet(out, enthalpyFlashMode(out), solution, level);
}

std::string degas(const Stream& in, Stream& vapor, Stream& condensate, Calculatable::SolutionMode solution,
                  int level) {
    const Phase::Mass* gas = in.findPhase(PhaseIndex::vapor);
    std::vector<const Phase::Mass*> condensed;
    for (const Phase::Mass* phase : in.phases())
        if (phase != in.Tphase && phase != gas) condensed.push_back(phase);
    if (!gas && condensed.empty()) return "Vphase or Xphase required in inlet stream";
    if (!gas || gas->phaseType() != PhaseType::vapor) return "vapor phase required in inlet stream";
    passPhases(vapor, in, {gas}, solution, level);
    passPhases(condensate, in, condensed, solution, level);
    return "";
}
