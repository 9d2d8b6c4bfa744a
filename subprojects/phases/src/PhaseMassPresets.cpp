#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseMass.h>

#include <cmath>
#include <vector>

// The presets of composition. Each writes one vector, chosen by the balance mode: the molar or mass
// fractions, or the molar or mass flows. On fractions a preset gives weights that are normalized; on
// flows the weights are taken in kmol/s or kg/s.
namespace Phase {

using Tarvo::Utility::MassBalanceMode;

namespace {
const Value& flowUnit(bool molar) {
    static const Value kmolPerSecond(1.0, "kmol/s");
    static const Value kgPerSecond(1.0, "kg/s");
    return molar ? kmolPerSecond : kgPerSecond;
}

double molecularWeight(int i) { return components[i]->mw().toDouble(); }

// Writes the weights into the target: normalized fractions, or flows in kmol/s or kg/s.
void write(const Mass::Target& target, const std::vector<double>& weights) {
    QuantityVector& v = *target.values;
    if (target.flows) {
        for (int i = 0; i < NCOMPONENTS; ++i) v[i] = weights[i] * flowUnit(target.molar);
        return;
    }
    double sum = 0;
    for (double weight : weights) sum += weight;
    for (int i = 0; i < NCOMPONENTS; ++i) v[i] = sum == 0 ? 0.0 : weights[i] / sum;
}

// Equal amounts on the basis `equalMolar`, expressed in the target's basis; entry key (if any) left out.
std::vector<double> equalWeights(const Mass::Target& target, bool equalMolar, int key) {
    std::vector<double> weights(NCOMPONENTS);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        if (i == key) continue;
        if (equalMolar == target.molar)
            weights[i] = 1.0;
        else
            weights[i] = equalMolar ? molecularWeight(i) : 1.0 / molecularWeight(i);
    }
    return weights;
}

void checkIndex(int i, const char* function) {
    if (i < 0 || i >= NCOMPONENTS)
        throw ErrorRunTime(function, "Wrong component index = " + std::to_string(i) +
                                         "  NCOMPONENTS = " + std::to_string(NCOMPONENTS));
}

// Fractions c[k] + b, normalized, with b chosen so that the smallest c (taken as 0 here) gives f.
std::vector<double> shaped(std::vector<double> c, double f) {
    const int n = static_cast<int>(c.size());
    double sum = 0;
    for (double ck : c) sum += ck;
    const double b = sum * f / (1 - f * n);
    sum += n * b;
    for (double& ck : c) ck = (ck + b) / sum;
    return c;
}
} // namespace

Mass::Target Mass::presetTarget(const Mode& mode, const char* signature) {
    switch (mode) {
    case Mode::Nw:
    case Mode::Mw: return {&w, false, false};
    case Mode::M: return {&mdotcomps, false, true};
    default: unsupportedMode(signature, mode);
    }
}

void Mass::setEquimolar(const Mode& mode) {
    requireComponents(__PRETTY_FUNCTION__);
    const Target target = presetTarget(mode, __PRETTY_FUNCTION__);
    write(target, equalWeights(target, true, -1));
}

void Mass::setEquimass(const Mode& mode) {
    requireComponents(__PRETTY_FUNCTION__);
    const Target target = presetTarget(mode, __PRETTY_FUNCTION__);
    write(target, equalWeights(target, false, -1));
}

void Mass::setEquimolarNoKey(const Mode& mode, int key) {
    requireComponents(__PRETTY_FUNCTION__);
    const Target target = presetTarget(mode, __PRETTY_FUNCTION__);
    write(target, equalWeights(target, true, key));
}

void Mass::setEquimassNoKey(const Mode& mode, int key) {
    requireComponents(__PRETTY_FUNCTION__);
    const Target target = presetTarget(mode, __PRETTY_FUNCTION__);
    write(target, equalWeights(target, false, key));
}

void Mass::setPure(const Mode& mode, int i) {
    requireComponents(__PRETTY_FUNCTION__);
    checkIndex(i, "Phase::Mass::setPure");
    const Target target = presetTarget(mode, __PRETTY_FUNCTION__);
    std::vector<double> weights(NCOMPONENTS, 0.0);
    weights[i] = 1.0;
    write(target, weights);
}

void Mass::setImpure(const Mode& mode, int i, double f) {
    requireComponents(__PRETTY_FUNCTION__);
    checkIndex(i, "Phase::Mass::setImpure");
    const Target target = presetTarget(mode, __PRETTY_FUNCTION__);
    std::vector<double> weights(NCOMPONENTS, f);
    weights[i] = 1.0 - (NCOMPONENTS - 1) * f;
    write(target, weights);
}

void Mass::clearComposition(const Mode& mode) {
    requireComponents(__PRETTY_FUNCTION__);
    const Target target = presetTarget(mode, __PRETTY_FUNCTION__);
    for (Value& v : target.values->value()) {
        if (target.flows)
            v.clear();
        else
            v = 0.0;
    }
}

void Mass::setSymmetrical(const Mode& mode, double f) {
    requireComponents(__PRETTY_FUNCTION__);
    const Target target = presetTarget(mode, __PRETTY_FUNCTION__);
    if (target.flows) unsupportedMode(__PRETTY_FUNCTION__, mode);
    if (NCOMPONENTS == 1) return write(target, {1.0});
    std::vector<double> c(NCOMPONENTS);
    for (int k = 0; k < NCOMPONENTS; ++k)
        c[k] = std::cos((static_cast<double>(k) / (NCOMPONENTS - 1) - 0.5) * M_PI);
    write(target, shaped(c, f));
}

void Mass::setAsymmetrical(const Mode& mode, bool ascending, double f) {
    requireComponents(__PRETTY_FUNCTION__);
    const Target target = presetTarget(mode, __PRETTY_FUNCTION__);
    if (target.flows) unsupportedMode(__PRETTY_FUNCTION__, mode);
    std::vector<double> c(NCOMPONENTS);
    for (int k = 0; k < NCOMPONENTS; ++k) c[k] = ascending ? k : NCOMPONENTS - 1 - k;
    write(target, shaped(c, f));
}

} // namespace Phase
