#ifndef TARVO_PHASES_TESTS_PHASETESTSUPPORT_H
#define TARVO_PHASES_TESTS_PHASETESTSUPPORT_H

#include <tarvo/components/ListComponents.h>
#include <tarvo/core/KernelStart.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/phases/PhaseMass.h>
#include <tarvo/phases/RegisterPhases.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

// The kernel's five species (CO2, CH4, H2O, N2, O2) and the phase types, for every test.
class PhaseTest : public ::testing::Test {
protected:
    void SetUp() override {
        Tarvo::Core::startKernel();
        registerPhases();
    }
    void TearDown() override { Tarvo::Core::stopKernel(); }

    // A phase of a registered type, made through the factory as a stream would make it.
    template <typename T = Phase::Mass> std::unique_ptr<T> make(const std::string& type) {
        Node* node = NodeFactory::create(type, Tarvo::Persistency::Defaults("P1", "test phase"), 0, nullptr, nullptr,
                                         nullptr);
        auto* phase = dynamic_cast<T*>(node);
        if (!phase) delete node;
        EXPECT_NE(phase, nullptr) << type;
        return std::unique_ptr<T>(phase);
    }
};

// The message of the Error that f throws, or "no error".
template <typename F> std::string errorText(F f) {
    try {
        f();
    } catch (const Error& e) {
        return e.message();
    }
    return "no error";
}

#endif
