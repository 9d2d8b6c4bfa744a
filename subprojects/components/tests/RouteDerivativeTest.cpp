// Every route of every catalogue entry carries the temperature derivative of its value: flashes and
// simultaneous solves take their Jacobians from these, and a slope that does not match the value makes
// Newton's method crawl.
#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/components/ListComponents.h>

#include "ComponentTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

using namespace componentTests;

namespace {

// The kernel's five species and the 86 catalogue entries, which it owns.
struct EverySpecies {
    EverySpecies() {
        loadComponents();
        for (int i = 0; i < NCOMPONENTS; ++i) species.push_back(components[i]);
        for (const std::string& entry : catalogueEntries()) {
            catalogue.emplace_back(newCatalogueComponent(entry, entry));
            species.push_back(catalogue.back().get());
        }
    }
    std::vector<const ComponentGeneric*> species;
    std::vector<std::unique_ptr<ComponentGeneric>> catalogue;
};

// A value and its slopes by T and by P as their bits, so that a comparison tells the last one.
std::array<std::uint64_t, 3> bits(double value, double dT, double dP) {
    const double numbers[3] = {value, dT, dP};
    std::array<std::uint64_t, 3> raw;
    std::memcpy(raw.data(), numbers, sizeof numbers);
    return raw;
}
std::array<std::uint64_t, 3> bits(const Value& v) {
    return bits(v.toDouble(), v.active().derivative(0), v.active().derivative(1));
}

} // namespace

TEST(RouteDerivatives, EveryTemperatureRouteOfTheCatalogueAgreesWithACentralDifference) {
    const Value P = Pa(2e5);
    using Route = std::function<Value(const ComponentGeneric&, const Value&)>;
    const std::vector<std::pair<const char*, Route>> routes{
        {"psat", [](const ComponentGeneric& c, const Value& T) { return c.psat(T); }},
        {"dhvl", [](const ComponentGeneric& c, const Value& T) { return c.dhvl(T); }},
        {"hv", [&](const ComponentGeneric& c, const Value& T) { return c.hv(T, P); }},
        {"sv", [&](const ComponentGeneric& c, const Value& T) { return c.sv(T, P); }},
        {"cpv", [&](const ComponentGeneric& c, const Value& T) { return c.cpv(T, P); }},
        {"hl", [&](const ComponentGeneric& c, const Value& T) { return c.hl(T, P); }},
        {"sl", [&](const ComponentGeneric& c, const Value& T) { return c.sl(T, P); }},
        {"cpl", [&](const ComponentGeneric& c, const Value& T) { return c.cpl(T, P); }},
        {"hs", [&](const ComponentGeneric& c, const Value& T) { return c.hs(T, P); }},
        {"ss", [&](const ComponentGeneric& c, const Value& T) { return c.ss(T, P); }},
        {"rhol", [&](const ComponentGeneric& c, const Value& T) { return c.rhol(T, P); }},
        {"rhos", [&](const ComponentGeneric& c, const Value& T) { return c.rhos(T, P); }},
        {"kvli", [&](const ComponentGeneric& c, const Value& T) { return c.kvli(T, P); }},
    };
    int checked = 0;
    for (const std::string& entry : catalogueEntries()) {
        std::unique_ptr<ComponentGeneric> c(newCatalogueComponent(entry, entry));
        ASSERT_NE(c, nullptr) << entry;
        // Inside the liquid range of most species, away from the ends of the correlations.
        const double t = std::clamp(0.7 * c->Tc().toDouble(), 260.0, 600.0);
        for (const auto& [name, route] : routes) {
            const auto f = [&](const Value& T) { return route(*c, T); };
            const double h = 1e-4 * t;
            const double ad = forwardDerivative(f, t, "K"), fd = centralDifference(f, t, h, "K");
            const double scale = std::max(std::fabs(fd), 1e-9 * std::fabs(f(K(t)).toDouble()));
            EXPECT_NEAR(ad, fd, 1e-5 * scale + 1e-12) << entry << " " << name << " at " << t << " K";
            ++checked;
        }
    }
    EXPECT_EQ(checked, 86 * 13);
}

TEST(RouteDerivatives, CatalogueEntriesAreFoundByTheirNames) {
    std::unique_ptr<ComponentGeneric> water(newCatalogueComponent("water", "H2O"));
    ASSERT_NE(water, nullptr);
    EXPECT_EQ(water->name, "H2O");
    EXPECT_NEAR(water->mw().toDouble(), 18.015324, 1e-6);
    EXPECT_EQ(newCatalogueComponent("Water", "H2O"), nullptr);
    EXPECT_EQ(catalogueEntries().size(), 86u);
}

// The ideal phase shares a vapor's enthalpy and heat capacity between pressures at one temperature: every route of
// the kernel's species and of the catalogue gives the ideal gas's, the same number and slope at any pressure.
TEST(RouteDerivatives, VaporEnthalpyAndHeatCapacityAreTheSameAtEveryPressure) {
    const EverySpecies every;
    const std::vector<const ComponentGeneric*>& species = every.species;
    ActiveContext::push(2);
    for (const ComponentGeneric* c : species) {
        for (double t : {250.0, 400.0, 900.0}) {
            Value T(t, "K"), low(1e3, "Pa"), high(1e7, "Pa");
            T.active().setActive(0);
            low.active().setActive(1);
            const auto hLow = bits(c->hv(T, low)), cpLow = bits(c->cpv(T, low));
            low.active().inactivate(1);
            high.active().setActive(1);
            EXPECT_EQ(bits(c->hv(T, high)), hLow) << c->name << " at " << t << " K";
            EXPECT_EQ(bits(c->cpv(T, high)), cpLow) << c->name << " at " << t << " K";
            high.active().inactivate(1);
            T.active().inactivate(0);
        }
    }
    ActiveContext::pop();
    EXPECT_EQ(species.size(), 5u + 86u);
}

// A vapor point is the route's value and its two slopes, bit for bit, whether the route evaluates its values or
// works the numbers out itself: with T and P as the directions of a context, and without directions.
TEST(RouteDerivatives, VaporPointsAreTheRoutesNumbersBitForBit) {
    const EverySpecies every;
    const std::vector<const ComponentGeneric*>& species = every.species;
    using Property = RouteHeatVapor::Property;
    const auto route = [](const ComponentGeneric& c, Property kind, const Value& T, const Value& P) {
        return kind == Property::enthalpy ? c.hv(T, P) : kind == Property::entropy ? c.sv(T, P) : c.cpv(T, P);
    };
    int checked = 0;
    for (const int directions : {2, 0}) {
        if (directions > 0) ActiveContext::push(directions);
        for (const ComponentGeneric* c : species) {
            for (double t : {250.0, 400.0, 900.0}) {
                for (double p : {1e3, 1e7}) {
                    Value T(t, "K"), P(p, "Pa");
                    if (directions > 0) {
                        T.active().setActive(0);
                        P.active().setActive(1);
                    }
                    for (const Property kind : {Property::enthalpy, Property::entropy, Property::heatCapacity}) {
                        const Value v = route(*c, kind, T, P);
                        const RouteHeatVapor::Point point = c->vaporPoint(kind, T, P);
                        const auto expected = bits(v);
                        if (directions > 0)
                            EXPECT_EQ(bits(point.value, point.dT, point.dP), expected)
                                << c->name << " " << static_cast<int>(kind) << " at " << t << " K, " << p << " Pa";
                        else
                            EXPECT_EQ(bits(point.value, 0, 0)[0], expected[0]) << c->name << " at " << t << " K";
                        ++checked;
                    }
                    if (directions > 0) {
                        P.active().inactivate(1);
                        T.active().inactivate(0);
                    }
                }
            }
        }
        if (directions > 0) ActiveContext::pop();
    }
    EXPECT_EQ(checked, 2 * (5 + 86) * 3 * 2 * 3);

    // Arguments in other units are reported as the route reports them.
    const std::string message = errorMessage([&] { species[0]->vaporPoint(Property::entropy, P0, P0); });
    EXPECT_NE(message.find("incompatible units"), std::string::npos) << message;
}
