// Every route of every catalogue entry carries the temperature derivative of its value: flashes and
// simultaneous solves take their Jacobians from these, and a slope that does not match the value makes
// Newton's method crawl.
#include <tarvo/components/ComponentCatalogue.h>

#include "ComponentTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

using namespace componentTests;

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
