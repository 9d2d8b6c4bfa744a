#include "StreamTestSupport.h"

#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/value/ActiveContext.h>

#include <cmath>
#include <cstring>

namespace {
// The bubble or dew temperature of an ideal mixture at P by bisection on Raoult's law, written apart from
// the flash: the bubble point where sum z psat / P = 1, the dew point where sum z P / psat = 1.
double raoultTemperature(const std::vector<double>& z, double P, bool bubble) {
    double lo = 200, hi = 600;
    for (int k = 0; k < 200; ++k) {
        const double T = 0.5 * (lo + hi);
        double s = 0;
        for (int i = 0; i < NCOMPONENTS; ++i) {
            const double ps = components[i]->psat(Value(T, "K")).toDouble();
            s += bubble ? z[i] * ps / P : z[i] * P / ps;
        }
        // Both sums fall with T on the dew side and rise on the bubble side.
        if ((s > 1) == bubble)
            hi = T;
        else
            lo = T;
    }
    return 0.5 * (lo + hi);
}
} // namespace

// Bubble and dew points of an ideal mixture without dissolved gases: the flash with the vapor fraction
// given against bisection on Raoult's law.
TEST_F(StreamTest, BubbleAndDewPointsFollowRaoultsLaw) {
    components.clear();
    for (const char* entry : {"benzene", "methanol", "ethanol"}) components.add(newCatalogueComponent(entry, entry));
    const std::vector<double> z{0.4, 0.5, 0.1};
    for (double fraction : {0.0, 1.0}) {
        auto s = make("StreamIdealLiquidVapor");
        feed(*s, 10, z, 2e5, 380, "PA");
        phase(*s, "Vphase").fraction = fraction;
        s->calculate(0);
        EXPECT_TRUE(s->errorList().empty()) << fraction;
        EXPECT_NEAR(s->T.toDouble(), raoultTemperature(z, 2e5, fraction == 0.0), 1e-6) << fraction;
    }
}

// Every registered stream type is created by its name and calculated from its defaults.
TEST_F(StreamTest, EveryRegisteredStreamCalculatesFromItsDefaults) {
    int streams = 0;
    for (const auto& type : NodeFactory::types()) {
        if (type.category != "stream") continue;
        ++streams;
        if (type.name.find("Unifac") != std::string::npos) {
            // The kernel's gases have no UNIFAC groups: refused by name, not calculated into NaN.
            std::string refusal;
            std::unique_ptr<Node> node(NodeFactory::create(type.name, {"S1", "test stream"}, 0, nullptr, nullptr, nullptr));
            try {
                auto& s = dynamic_cast<Stream&>(*node);
                s.initializeNonPersistents();
                s.calculate(0);
            } catch (const Error& e) {
                refusal = e.message();
            }
            EXPECT_NE(refusal.find("component CO2 has no UNIFAC groups assigned"), std::string::npos) << type.name;
            continue;
        }
        auto s = make(type.name);
        ASSERT_TRUE(s) << type.name;
        // The kernel's species include water, which PC-SAFT's non-associating form lacks, and gases beside
        // it, which the water streams refuse: their defaults end in an error of the model's own.
        if (type.name.rfind("StreamIapws", 0) == 0 || type.name.rfind("StreamPcsaft", 0) == 0) {
            EXPECT_THROW(s->calculate(0), ErrorRunTime) << type.name;
            continue;
        }
        EXPECT_NO_THROW(s->calculate(0)) << type.name;
        EXPECT_TRUE(s->errorList().empty()) << type.name << ": " << s->errorList().front();
        EXPECT_TRUE(std::isfinite(s->Tphase->totalFlow().toDouble())) << type.name;
        if (auto* properties = dynamic_cast<Phase::MassMolarProperties*>(s->Tphase)) {
            EXPECT_TRUE(std::isfinite(properties->H.toDouble())) << type.name;
        }
    }
    EXPECT_GE(streams, 15);
}

// Three inlets into one outlet: each component's flow adds up, the pressure is the lowest, the
// temperature the flow-weighted mean.
TEST_F(StreamTest, GatherClosesTheMassBalanceOfThreeInlets) {
    const std::vector<std::vector<double>> x{{0.2, 0.3, 0.1, 0.25, 0.15}, {0.9, 0.1, 0, 0, 0}, {0, 0, 0, 0.79, 0.21}};
    const double flows[] = {12.5, 0.37, 1234.0}, pressures[] = {3e5, 1.1e5, 2e5}, temperatures[] = {300, 350, 420};
    std::vector<std::unique_ptr<Stream>> inlets;
    std::vector<EdgeBase*> edges;
    double mass = 0;
    for (int k = 0; k < 3; ++k) {
        inlets.push_back(make("StreamVapor", {"S" + std::to_string(k), "inlet"}));
        feed(*inlets.back(), flows[k], x[k], pressures[k], temperatures[k]);
        inlets.back()->calculate(0);
        mass += total(*inlets.back()).mdot.toDouble();
        edges.push_back(inlets.back().get());
    }
    auto out = make("StreamVapor", {"Out", "outlet"});
    feed(*out, 0, x[0], 1e5, 300); // the same flow option as the inlets
    Value P, T;
    gather(0, out.get(), edges, P, T);
    out->P = P;
    out->T = T;
    out->calculate(0);
    EXPECT_NEAR(total(*out).mdot.toDouble(), mass, 1e-12 * mass);
    for (int i = 0; i < NCOMPONENTS; ++i) {
        double n = 0;
        for (auto& in : inlets) n += total(*in).ndotcomps[i].toDouble();
        EXPECT_NEAR(total(*out).ndotcomps[i].toDouble(), n, 1e-12 * total(*out).ndot.toDouble()) << i;
    }
    EXPECT_EQ(P.toDouble(), 1.1e5);
    const double weighted = (12.5 * 300 + 0.37 * 350 + 1234.0 * 420) / (12.5 + 0.37 + 1234.0);
    EXPECT_NEAR(T.toDouble(), weighted, 1e-12 * weighted);
}

// No flow at all: the stream calculates, warns, and keeps its composition.
TEST_F(StreamTest, ZeroFlowIsAWarningNotAFailure) {
    auto s = make("StreamIdealLiquidVapor");
    feed(*s, 0, {0.2, 0.3, 0.1, 0.25, 0.15}, 101325, 300);
    s->calculate(0);
    EXPECT_TRUE(s->errorList().empty());
    EXPECT_NEAR(total(*s).x[1].toDouble(), 0.3, 1e-15);
    EXPECT_EQ(total(*s).ndot.toDouble(), 0.0);
}

// A step of a simultaneous solve leaves a one-phase stream's phase with the properties of the state that the step
// set, bit for bit those that a sequential calculation of that state gives: none is left from the state before.
TEST_F(StreamTest, ASimultaneousStepLeavesThePropertiesOfItsState) {
    const std::vector<double> before{0.2, 0.5, 0.0, 0.3, 0.0}, after{0.4, 0.3, 0.0, 0.2, 0.1};
    for (const char* type : {"StreamVapor", "StreamLiquid"}) {
        SCOPED_TRACE(type);
        auto stepped = make(type);
        feed(*stepped, 10, before, 2e5, 320);
        stepped->calculate(0);
        feed(*stepped, 12, after, 3e5, 350);
        stepped->go(Calculatable::simultaneous, 0);
        auto calculated = make(type);
        feed(*calculated, 12, after, 3e5, 350);
        calculated->calculate(0);
        const std::string tag = std::string(type) == "StreamVapor" ? "Vphase" : "Lphase";
        for (const char* property : {"rho", "v", "vdot", "H", "h", "S", "s", "g", "Cp", "cp"}) {
            const double got = phase(*stepped, tag).Q(property).toDouble();
            const double expected = phase(*calculated, tag).Q(property).toDouble();
            EXPECT_EQ(std::memcmp(&got, &expected, sizeof got), 0) << property << ": " << got << " for " << expected;
        }
    }
}
