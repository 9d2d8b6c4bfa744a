#ifndef TARVO_STREAMS_TESTS_STREAMTESTSUPPORT_H
#define TARVO_STREAMS_TESTS_STREAMTESTSUPPORT_H

#include <tarvo/components/ListComponents.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/phases/RegisterPhases.h>
#include <tarvo/streams/RegisterStreams.h>
#include <tarvo/streams/Stream.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// The kernel's five species (CO2, CH4, H2O, N2, O2; the three gases dissolve in water by Henry's law) and
// the phase and stream types, for every test.
class StreamTest : public ::testing::Test {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        registerPhases();
        registerStreams();
    }
    void TearDown() override { Tarvo::Core::stopKernel(); }

    // A stream of a registered type, ready to calculate, as a flowsheet would make it.
    static std::unique_ptr<Stream> make(const std::string& type,
                                        const Tarvo::Persistency::Defaults& defaults = {"S1", "test stream"}) {
        std::unique_ptr<Node> node(NodeFactory::create(type, defaults, 0, nullptr, nullptr, nullptr));
        auto* stream = dynamic_cast<Stream*>(node.get());
        if (!stream) return nullptr;
        node.release();
        stream->initializeNonPersistents();
        return std::unique_ptr<Stream>(stream);
    }

    // Feed: flow in kmol/h, molar fractions in component order, P in Pa, T in K, flash mode by name.
    static void feed(Stream& s, double ndot, const std::vector<double>& x, double P, double T,
                     const std::string& flash = "PT") {
        auto& total = dynamic_cast<Phase::MassMolar&>(*s.Tphase);
        total.ndot = Value(ndot, "kmol/h");
        for (int i = 0; i < NCOMPONENTS; ++i) total.x[i] = x[i];
        s.P = Value(P, "Pa");
        s.T = Value(T, "K");
        s.flowoption.value() = "Nx";
        s.flashoption.value() = flash;
    }

    static Phase::MassMolarProperties& phase(Stream& s, const std::string& tag) {
        return dynamic_cast<Phase::MassMolarProperties&>(s.child(tag));
    }
    static Phase::MassMolarProperties& total(Stream& s) { return phase(s, "Tphase"); }
};

#endif
