#ifndef TARVO_UNITS_TESTS_UNITTESTSUPPORT_H
#define TARVO_UNITS_TESTS_UNITTESTSUPPORT_H

#include "Bench.h"

#include <tarvo/components/ComponentCatalogue.h>
#include <tarvo/components/ListComponents.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/phases/RegisterPhases.h>
#include <tarvo/streams/RegisterStreams.h>
#include <tarvo/streams/Stream.h>
#include <tarvo/units/Connectivity.h>
#include <tarvo/units/RegisterReactions.h>
#include <tarvo/units/RegisterUnits.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// The kernel's five species (CO2, CH4, H2O, N2, O2) and the phase, stream and unit types, with a bench.
class UnitTest : public ::testing::Test {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        registerPhases();
        registerStreams();
        registerReactions();
        registerUnits();
        if (!NodeFactory::registered("UnitTestBench"))
            NodeFactory::registerType<Bench>("UnitTestBench", "Units under test", "flowsheet", false, {}, {},
                                             {}, "", 10, 10);
        bench_.reset(NodeFactory::create("UnitTestBench", {"B", "bench"}, 0, nullptr, nullptr, nullptr));
    }
    void TearDown() override {
        bench_.reset();
        Tarvo::Core::stopKernel();
    }

    template <typename T = Connectivity>
    T& unit(const std::string& type, const std::string& tag, Tarvo::Persistency::Defaults defaults = {}) {
        return dynamic_cast<T&>(
            bench_->addChild(type, Tarvo::Persistency::Defaults(defaults, tag, "unit " + tag)));
    }
    Stream& stream(const std::string& type, const std::string& tag) {
        auto& s = dynamic_cast<Stream&>(bench_->addChild(type, {tag, "stream " + tag}));
        s.initializeNonPersistents();
        return s;
    }
    // A stream from unit `from` at `fromPort` to unit `to` at `toPort`; either unit may be null.
    Stream& connect(const std::string& type, const std::string& tag, Connectivity* from, std::string fromPort,
                    Connectivity* to, std::string toPort) {
        Stream& s = stream(type, tag);
        if (from) from->attach(s, fromPort);
        if (to) to->attach(s, toPort);
        return s;
    }
    // A simple stream: flow in kg/h, mass fractions in component order (CO2, CH4, H2O, N2, O2).
    static void feed(Stream& s, double mdot, const std::vector<double>& w, double P, double T) {
        s.flowoption = "Mw";
        s.Tphase->mdot = Value(mdot, "kg/h");
        for (int i = 0; i < NCOMPONENTS; ++i)
            s.Tphase->w[i] = w[i];
        s.P = Value(P, "Pa");
        s.T = Value(T, "K");
        s.calculate(0);
    }
    static double flow(const Stream& s, int i) { return s.Tphase->mdotcomps[i].toDouble("kg/h"); }
    static double mdot(const Stream& s) { return s.Tphase->mdot.toDouble("kg/h"); }

    // The error text of what `f` throws, empty if nothing.
    template <typename F> static std::string thrown(F f) {
        try {
            f();
        } catch (const Error& e) {
            return e.message();
        }
        return "";
    }
    static bool has(const std::vector<std::string>& list, const std::string& text) {
        for (const std::string& s : list)
            if (s == text) return true;
        return false;
    }

    std::unique_ptr<Node> bench_;
};

// The kernel's five species first, at their usual places, then those of the reactions of the catalogue,
// each named by its formula and made from its catalogue entry.
class ReactingUnitTest : public UnitTest {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        const std::pair<const char*, const char*> species[] = {{"CO", "CO"},
                                                               {"H2", "H2"},
                                                               {"NH3", "ammonia"},
                                                               {"NO2", "NO2"},
                                                               {"C2H6", "ethane"},
                                                               {"C2H4", "ethylene"},
                                                               {"C3H8", "propane"},
                                                               {"C4H10", "butane"},
                                                               {"C5H12", "pentane"},
                                                               {"C6H14", "nhexane"},
                                                               {"CH3OH", "methanol"},
                                                               {"C6H5OH", "phenol"},
                                                               {"C10H8", "naphthalene"},
                                                               {"C", "carbon"}};
        for (const auto& [name, entry] : species)
            components.add(newCatalogueComponent(entry, name));
        UnitTest::SetUp();
    }
    void TearDown() override {
        UnitTest::TearDown();
        Tarvo::Core::stopKernel();
    }
    // Molar flows in kmol/s by component name, all others zero, at P in Pa and T in K.
    static void feedMoles(Stream& s, const std::vector<std::pair<std::string, double>>& flows, double P,
                          double T) {
        s.flowoption = "N";
        for (int i = 0; i < NCOMPONENTS; ++i)
            s.Q("Tphase.ndotcomps", i) = Value(0.0, "kmol/s");
        for (const auto& [name, n] : flows)
            s.Q("Tphase.ndotcomps", name) = Value(n, "kmol/s");
        s.P = Value(P, "Pa");
        s.T = Value(T, "K");
        s.calculate(0);
    }
    static double moles(Stream& s, const std::string& name) {
        return s.Q("Tphase.ndotcomps", name).toDouble("kmol/s");
    }
};

#endif
