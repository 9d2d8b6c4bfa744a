#include "PlantChecks.h"

#include <tarvo/components/ListComponents.h>
#include <tarvo/core/EdgeBase.h>
#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/flowsheet/Terminator.h>
#include <tarvo/units/Compressor.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

// The streams of `sheet` that meet `unit` at `port` ("in1", "out2"), in the order of their tags.
std::vector<std::string> streamsAt(Model& sheet, const std::string& unit, const std::string& port, bool inlet) {
    std::vector<std::string> tags;
    for (const auto& [tag, child] : sheet.children()) {
        const auto* edge = dynamic_cast<const EdgeBase*>(child.get());
        if (!edge) continue;
        if (inlet ? edge->toTAG.value() == unit && edge->toPort.value() == port
                  : edge->fromTAG.value() == unit && edge->fromPort.value() == port)
            tags.push_back(tag);
    }
    return tags;
}

std::string streamAt(Model& sheet, const std::string& unit, const std::string& port, bool inlet) {
    const std::vector<std::string> tags = streamsAt(sheet, unit, port, inlet);
    EXPECT_EQ(tags.size(), 1u) << unit << ":" << port;
    return tags.empty() ? std::string() : tags.front();
}

double flow(Model& sheet, const std::string& stream, int i) {
    return sheet.Q(stream + ":Tphase.ndotcomps", i).toDouble();
}

double total(Model& sheet, const std::string& stream) {
    return sheet.Q(stream + ":Tphase.ndot").toDouble();
}

// One feed: the split s to the permeate of each component, from the permeation factor f, the pressure ratio
// delta and the estimated stage cut theta; the retentate side at the feed's composition (RTSC) or perfectly
// mixed (CSTR).
void expectOneFeedModule(Model& sheet, const std::string& unit, double tolerance) {
    Model& m = dynamic_cast<Model&>(sheet.child(unit));
    const bool cstr = m.type() == "Membrane12Cstr";
    const std::string feed = streamAt(sheet, unit, "in1", true), permeate = streamAt(sheet, unit, "out1", false),
                      retentate = streamAt(sheet, unit, "out2", false);
    if (feed.empty() || permeate.empty() || retentate.empty()) return;
    const double F = total(sheet, feed), pPermeate = m.Q("Ppermeate").toDouble();
    const double delta = (sheet.Q(feed + ".P").toDouble() - m.Q("deltaPretentate").toDouble() / 2) / pPermeate;
    const double theta = m.Q("stageCutEst").toDouble();
    EXPECT_NEAR(m.Q("delta").toDouble(), delta, 1e-12 * delta);
    double cut = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const double f = m.Q("permeance", i).toDouble() * m.Q("A").toDouble() * pPermeate / F;
        const double s = cstr ? 1 / (1 + (1 - theta) / delta * (1 / theta + 1 / f)) : delta / (1 / theta + 1 / f);
        const double in = flow(sheet, feed, i);
        cut += in / F * s;
        EXPECT_NEAR(flow(sheet, permeate, i), s * in, tolerance * F) << unit << " " << components[i]->name;
        EXPECT_NEAR(flow(sheet, permeate, i) + flow(sheet, retentate, i), in, 1e-12 * F) << unit;
    }
    EXPECT_NEAR(m.Q("stageCut").toDouble(), cut, tolerance) << unit;
    // The passes drive the estimate to the cut that results.
    EXPECT_NEAR(theta, cut, tolerance) << unit;
}

// Two feeds: the share theta of what enters on both sides that leaves on the permeate side, at the inlet
// compositions (RTSC) or at the mean of inlet and outlet with the estimated stage cut (linear); where that
// would take more of a component out of a side than the side holds, every transfer shrinks alike.
void expectTwoFeedModule(Model& sheet, const std::string& unit, double tolerance) {
    Model& m = dynamic_cast<Model&>(sheet.child(unit));
    const bool linear = m.type() == "Membrane22Linear";
    const std::string retentateIn = streamAt(sheet, unit, "in1", true), permeateIn = streamAt(sheet, unit, "in2", true);
    const std::string retentateOut = streamAt(sheet, unit, "out1", false),
                      permeateOut = streamAt(sheet, unit, "out2", false);
    if (retentateIn.empty() || permeateIn.empty() || retentateOut.empty() || permeateOut.empty()) return;
    const double n0 = total(sheet, retentateIn), n1 = total(sheet, permeateIn), N = n0 + n1;
    const double pr = sheet.Q(retentateIn + ".P").toDouble() - m.Q("deltaPretentate").toDouble() / 2;
    const double pp = sheet.Q(permeateIn + ".P").toDouble() - m.Q("deltaPpermeate").toDouble() / 2;
    const double delta = pr / pp, area = m.Q("A").toDouble();
    const double c = linear ? m.Q("stageCutEst").toDouble() : 0;
    std::vector<double> moved(NCOMPONENTS), a(NCOMPONENTS), b(NCOMPONENTS);
    double factor = 1, cut = 0;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        a[i] = flow(sheet, retentateIn, i);
        b[i] = flow(sheet, permeateIn, i);
        const double l = (a[i] + b[i]) / N, x0 = n0 > 0 ? a[i] / n0 : 0, x1 = n1 > 0 ? b[i] / n1 : 0;
        const double f = m.Q("permeance", i).toDouble() * area * pp / N;
        double theta = 0.5;
        if (a[i] + b[i] > 0 && linear)
            theta = (l + (1 - c) * x0 - (1 - c) * x1 / delta + 2 * b[i] * (1 - c) / (N * f * delta)) /
                    (l * (1 + (1 - c) / delta * (2 / f + 1 / c)));
        else if (a[i] + b[i] > 0)
            theta = (b[i] + N * f * (delta * x0 - x1)) / (a[i] + b[i]);
        cut += l * theta;
        moved[i] = theta * (a[i] + b[i]) - b[i];
        if (moved[i] > a[i]) factor = std::min(factor, a[i] / moved[i]);
        if (-moved[i] > b[i]) factor = std::min(factor, b[i] / -moved[i]);
    }
    for (int i = 0; i < NCOMPONENTS; ++i) {
        EXPECT_NEAR(flow(sheet, permeateOut, i), b[i] + factor * moved[i], tolerance * N)
            << unit << " " << components[i]->name;
        EXPECT_NEAR(flow(sheet, retentateOut, i), a[i] - factor * moved[i], tolerance * N)
            << unit << " " << components[i]->name;
    }
    if (factor == 1) {
        EXPECT_NEAR(m.Q("stageCut").toDouble(), cut, tolerance) << unit;
        if (linear) {
            EXPECT_NEAR(c, cut, tolerance) << unit;
        }
    }
}

bool isTerminator(const Node& node) {
    return dynamic_cast<const Terminator*>(&node) != nullptr;
}

// The duties of the units at any depth inside `sheet`, each taken out between inlet and outlet; a compressor
// puts in its fluid power instead.
double dutiesOut(Model& sheet) {
    double out = 0;
    for (const auto& [tag, child] : sheet.children()) {
        if (isTerminator(*child) || dynamic_cast<const EdgeBase*>(child.get())) continue;
        auto* unit = dynamic_cast<Model*>(child.get());
        if (!unit) continue;
        if (dynamic_cast<FlowSheet*>(unit)) {
            out += dutiesOut(*unit);
        } else if (dynamic_cast<Compressor*>(unit)) {
            out -= unit->Q("Wf").toDouble();
        } else if (unit->hasQ("duty")) {
            out += unit->Q("duty").toDouble();
        } else {
            for (int k = 0; unit->hasQ("duty[" + std::to_string(k) + "]"); ++k) out += unit->Q("duty", k).toDouble();
        }
    }
    return out;
}

} // namespace

int expectModuleEquations(Model& sheet, double tolerance) {
    int checked = 0;
    for (const auto& [tag, child] : sheet.children()) {
        const std::string& type = child->type();
        if (type == "Membrane12Rtsc" || type == "Membrane12Cstr") {
            expectOneFeedModule(sheet, tag, tolerance);
            ++checked;
        } else if (type == "Membrane22Rtsc" || type == "Membrane22Linear") {
            expectTwoFeedModule(sheet, tag, tolerance);
            ++checked;
        } else if (auto* nested = dynamic_cast<FlowSheet*>(child.get())) {
            checked += expectModuleEquations(*nested, tolerance);
        }
    }
    return checked;
}

void expectPlantBalances(Model& sheet, double flowTolerance, double energyTolerance,
                         const std::vector<double>& reaction) {
    std::vector<double> in(NCOMPONENTS, 0.0), out(NCOMPONENTS, 0.0);
    double enthalpyIn = 0, enthalpyOut = 0, largest = 0, totalIn = 0;
    for (const auto& [tag, child] : sheet.children()) {
        const auto* edge = dynamic_cast<const EdgeBase*>(child.get());
        if (!edge) continue;
        const bool feed = edge->fromTAG.value() == "source", product = edge->toTAG.value() == "sink";
        if (!feed && !product) continue;
        const double h = sheet.Q(tag + ":Tphase.H").toDouble() * total(sheet, tag);
        largest = std::max(largest, std::fabs(h));
        (feed ? enthalpyIn : enthalpyOut) += h;
        if (feed) totalIn += total(sheet, tag);
        for (int i = 0; i < NCOMPONENTS; ++i) (feed ? in : out)[i] += flow(sheet, tag, i);
    }
    // The extent of the reaction that fits the changes best: any other change is a defect.
    double extent = 0, norm = 0;
    for (std::size_t i = 0; i < reaction.size(); ++i) {
        extent += reaction[i] * (out[i] - in[i]);
        norm += reaction[i] * reaction[i];
    }
    if (norm > 0) extent /= norm;
    for (int i = 0; i < NCOMPONENTS; ++i) {
        const double made = i < static_cast<int>(reaction.size()) ? reaction[i] * extent : 0.0;
        EXPECT_NEAR(out[i], in[i] + made, flowTolerance * totalIn) << components[i]->name;
    }
    const double duties = dutiesOut(sheet);
    largest = std::max(largest, std::fabs(duties));
    EXPECT_NEAR(enthalpyIn - enthalpyOut, duties, energyTolerance * largest);
}

double compressorPower(Model& sheet) {
    double power = 0;
    for (const auto& [tag, child] : sheet.children()) {
        if (auto* compressor = dynamic_cast<Compressor*>(child.get()))
            power += compressor->We.toDouble();
        else if (auto* nested = dynamic_cast<FlowSheet*>(child.get()))
            power += compressorPower(*nested);
    }
    return power;
}

int cutsOf(Model& sheet) {
    int cuts = 0;
    for (const auto& [tag, child] : sheet.children())
        if (const auto* edge = dynamic_cast<const EdgeBase*>(child.get()))
            cuts += edge->cutdest.value().empty() ? 0 : 1;
    return cuts;
}
