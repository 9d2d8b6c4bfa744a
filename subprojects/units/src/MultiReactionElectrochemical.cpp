#include <tarvo/components/ListComponents.h>
#include <tarvo/units/CalculateAverage.h>
#include <tarvo/units/MultiReactionElectrochemical.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

using Tarvo::Persistency::Defaults;

namespace {
// A species of the reaction that is absent from its side counts at this fraction, so that the voltage stays
// finite where a fuel cell is fed without its products.
constexpr double absent = 2.220446049250313e-16;
} // namespace

MultiReactionElectrochemical::MultiReactionElectrochemical(const Defaults& defaults, uint32_t id,
                                                           Persistency* persistency, Persistent* parent,
                                                           Persistent* root)
    : MultiReaction<2>(defaults, id, persistency, parent, root),
      option("option", "Calculation option", retrieveString(defaults, id, persistency, "option", ""), this),
      averageOption("averageOption", "Composition average option",
                    retrieveString(defaults, id, persistency, "averageOption", "log"), this) {
    for (Quantity* q : {&action, &Teq, &Tact, &deltaT, &Kin, &Kout, &H, &W, &A, &nCells, &E0, &E, &Rarea, &F, &J,
                        &Jset, &I, &Iset, &Voffset, &V, &Vset, &Vstack, &Power, &PowerDensity})
        addVariable(*q);
    for (Quantity* q : {&Teq, &Kin, &Kout, &A, &E0, &E, &I, &V, &Vstack, &Power, &PowerDensity})
        q->setOutput();
    addVariable(option);
    addVariable(averageOption);
}

void MultiReactionElectrochemical::atState(const Value& T, const Value& P0side, const Value& P1side) {
    Tact = T;
    pressures_[0] = P0side;
    pressures_[1] = P1side;
}

void MultiReactionElectrochemical::calculate(int) {
    const std::string& o = option.value();
    if (!o.empty() && o != "V" && o != "I" && o != "J")
        throw ErrorBrowsing::unsupportedOption(TARVO_FUNCTION, o, "Calculation option", fullTag(), type());
    if (!phasesReady_()) return;
    A = H * W;
    I = J * A;
    conv = nCells * I / (2.0 * F);
    for (int p = 0; p < 2; ++p)
        for (int c = 0; c < NCOMPONENTS; ++c)
            transfer[p][c] = coeff[p][c] * conv;
    // A starved cell reacts less than its current asks for: the warning says so, the voltage stays that of J.
    bound_();
    calculateEquilibrium();
}

Value MultiReactionElectrochemical::lnMassAction_(const std::array<std::vector<Value>, 2>& flows) const {
    Value sum(0.0);
    for (int p = 0; p < 2; ++p) {
        Value total(0.0, "kmol/s");
        for (const Value& n : flows[p])
            total += n;
        for (int c = 0; c < NCOMPONENTS; ++c) {
            if (coeff[p][c].toDouble() == 0.0) continue;
            const Value x = flows[p][c] / total;
            sum += coeff[p][c] * log((x.toDouble() > absent ? x : Value(absent)) * pressures_[p] / P0);
        }
    }
    return -action * sum;
}

void MultiReactionElectrochemical::calculateEquilibrium() {
    A = H * W;
    Teq = Tact + deltaT;
    Value gibbs(0.0, "J/kmol");
    for (int p = 0; p < 2; ++p)
        for (int c = 0; c < NCOMPONENTS; ++c) {
            if (coeff[p][c].toDouble() == 0.0) continue;
            const ComponentGeneric& component = *components[c];
            gibbs += coeff[p][c] * (component.isSolid() ? component.gs(Teq, P0) : component.gv(Teq, P0));
        }
    E0 = -action * gibbs / (2.0 * F);
    std::array<std::vector<Value>, 2> flows;
    for (int p = 0; p < 2; ++p) {
        flows[p].resize(NCOMPONENTS);
        for (int c = 0; c < NCOMPONENTS; ++c)
            flows[p][c] = inletFlow(p, c);
    }
    Kin = exp(lnMassAction_(flows));
    for (int p = 0; p < 2; ++p)
        for (int c = 0; c < NCOMPONENTS; ++c)
            flows[p][c] += transfer[p][c];
    Kout = exp(lnMassAction_(flows));
    const std::string& average = averageOption.value();
    Value K;
    if (average == "linear")
        calculateAverage("linear", Kin, Kout, K);
    else if (average == "outlet")
        K = Kout;
    else if (average == "log")
        calculateAverage("LMTD", Kin, Kout, K);
    else
        throw ErrorBrowsing::unsupportedOption(TARVO_FUNCTION, average, "Composition average option", fullTag(),
                                               type());
    E = E0 + R * Teq / (2.0 * F) * log(K);
    V = E - action * J * Rarea + Voffset;
    Vstack = nCells * V;
    Power = Vstack * I;
    PowerDensity = Power / (A * nCells);
}

Value MultiReactionElectrochemical::electricalResidual() const {
    const std::string& o = option.value();
    if (o == "V") return (Vset - V) / Value(1.0, "V");
    if (o == "I") return (Iset - I) / Value(1.0, "A");
    if (o == "J") return (Jset - J) / Value(1.0, "A/m2");
    throw ErrorBrowsing::unsupportedOption(TARVO_FUNCTION, o, "Calculation option", fullTag(), type());
}
