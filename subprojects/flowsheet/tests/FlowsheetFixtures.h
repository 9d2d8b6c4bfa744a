#ifndef TARVO_FLOWSHEET_TESTS_FLOWSHEETFIXTURES_H
#define TARVO_FLOWSHEET_TESTS_FLOWSHEETFIXTURES_H

#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/persistency/NodeFactory.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

// A flowsheet that builds nothing itself: the tests assemble it through the public operations.
class BareSheet : public FlowSheet {
public:
    BareSheet(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
              Persistent* parent, Persistent* root);
    void pre(SolutionMode, int) override {}
    void post(SolutionMode, int) override {}
    void makeUserEquations(std::list<Assignment*>::iterator&) override {}
};

// A recycle loop: the feed FEED and the recycle REC meet in the mixer MIX; the separator SEP sends the share
// outSplit[0] of each component to the product PROD and the rest back as REC, which is cut. At the steady
// state all of the feed leaves as product and REC carries (1 - s) / s of each component's feed.
// Options: "method", the cut solution (1 direct, 2 newton, 3 wegstein); "passes", the sequential limit; the
// string "stream", the stream type; "design" 1 for a user equation that sets the water split of SEP so that
// the recycle carries the item water, in kg/h (360). Its ports in1 and out1 are FEED and PROD, for a
// flowsheet around it.
class LoopSheet : public FlowSheet {
public:
    LoopSheet(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
              Persistent* parent, Persistent* root);
    void setup() override;
    void pre(SolutionMode mode, int level) override { calls.emplace_back(mode, level); }
    void post(SolutionMode, int) override {}
    void makeUserEquations(std::list<Assignment*>::iterator& it) override;
    int sequential() const override { return passes.value(); }

    Integer method{"method", "Cut solution method", 1, this};
    Integer passes{"passes", "Maximum sequential passes", 500, this};
    Integer design{"design", "Water recycle set by the split", 0, this};
    Integer water{"water", "Water recycle by design in kg per hour", 360, this};
    std::vector<std::pair<int, int>> calls; // mode and level of each pass
};

// The loop as a unit "G" of a flowsheet around it: FEED -> G -> PROD.
class PlantSheet : public FlowSheet {
public:
    PlantSheet(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
               Persistent* parent, Persistent* root);
    void pre(SolutionMode mode, int level) override { calls.emplace_back(mode, level); }
    void post(SolutionMode, int) override {}
    void makeUserEquations(std::list<Assignment*>::iterator&) override {}

    std::vector<std::pair<int, int>> calls;
};

// A divider of the feed F into the outlets A, B and C, whose first two splits s0 and s1 are set by design
// equations: A takes a fifth of the feed more than B (s0 = s1 + 0.2), and B as much as C (s1 = s2, where s2
// is what the others leave). Converged simultaneously alone; its unknowns, the two splits and the two of the
// feed's flash, are few enough for the dense store of derivatives.
class SplitSheet : public FlowSheet {
public:
    SplitSheet(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
               Persistent* parent, Persistent* root);
    void pre(SolutionMode, int) override {}
    void post(SolutionMode, int) override {}
    void makeUserEquations(std::list<Assignment*>::iterator& it) override;
};

// The kernel with its species, the types of streams, units and flowsheets and the fixtures above, in a
// folder of its own for the drawings that scheduling leaves.
class FlowsheetTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A new flowsheet of a registered type, set up as a new case would be.
    template <typename T>
    std::unique_ptr<T> make(const std::string& type, Tarvo::Persistency::Defaults defaults = {}) {
        auto sheet = std::unique_ptr<T>(dynamic_cast<T*>(
            NodeFactory::create(type, Tarvo::Persistency::Defaults(defaults, "LOOP", "test flowsheet"), 0,
                                nullptr, nullptr, nullptr)));
        sheet->setup();
        sheet->initializeNonPersistents();
        return sheet;
    }
    // An empty flowsheet, to be assembled by the test.
    std::unique_ptr<FlowSheet> bare() {
        return std::unique_ptr<FlowSheet>(dynamic_cast<FlowSheet*>(
            NodeFactory::create("TestBare", {"BARE", "test flowsheet"}, 0, nullptr, nullptr, nullptr)));
    }
    template <typename F> static std::string thrown(F f) {
        try {
            f();
        } catch (const Error& e) {
            return e.message();
        }
        return "";
    }
    // The mass flow of component i of a stream in kg/h.
    static double flow(Object& sheet, const std::string& stream, int i);

private:
    std::filesystem::path folder_;
    std::filesystem::path previous_;
};

#endif
