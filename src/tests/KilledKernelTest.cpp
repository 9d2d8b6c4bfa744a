// Kernels killed with SIGKILL at random moments of new, duplicate, calculate and remove. Each writes the
// store in one transaction, so after every kill each case in the store is whole (as created or as
// calculated, its scalars and vectors of one update), no node lies outside the block of its case, and
// the case still calculates.
#include "RunTarvo.h"
#include "StoredCases.h"
#include "TemporaryDatabase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <sys/wait.h>

namespace {

using Clock = std::chrono::steady_clock;
using Words = std::vector<std::string>;

constexpr int trials = 50;

class KilledKernel : public ::testing::Test {
protected:
    void SetUp() override {
        database_.writeConfiguration(configuration_);
        original_ = created({"new", "Test<Membrane12Rtsc>"});
        asCreated_ = contents(original_);
        const int copy = created({"duplicate", std::to_string(original_)});
        ASSERT_EQ(contents(copy), asCreated_);
        ASSERT_EQ(run({"calculate", std::to_string(copy)}).exitCode, 0);
        asCalculated_ = contents(copy);
        ASSERT_NE(asCalculated_, asCreated_);
        ASSERT_EQ(strayNodes(), 0);
    }

    TarvoRun run(const Words& words) {
        return runProgram(TARVO_FIXTURE_EXECUTABLE, words, folder_.path(),
                          {{"TARVO_TEST_CONFIGURATION", configuration_}});
    }

    int created(const Words& words) {
        const TarvoRun r = run(words);
        EXPECT_EQ(r.exitCode, 0) << r.err;
        return std::atoi(r.idTxt.c_str());
    }

    // Runs a command to its end a few times and returns the longest, a bound on where a kill can land.
    Clock::duration span(const std::function<Words()>& words) {
        Clock::duration longest{};
        for (int i = 0; i < 3; ++i) {
            const Words command = words();
            const Clock::time_point start = Clock::now();
            run(command);
            longest = std::max(longest, Clock::now() - start);
        }
        return longest;
    }

    // Starts `words` and kills it with SIGKILL at a moment drawn from [0, 1.2 span): most kills land
    // while it works, some after it ended.
    // True when the signal ended it, not its own end.
    bool killAtRandom(const Words& words, Clock::duration span) {
        std::uniform_int_distribution<long long> moment(0, static_cast<long long>(1.2 * span.count()));
        const Clock::duration delay(moment(random_));
        const pid_t pid = startProgram(TARVO_FIXTURE_EXECUTABLE, words, folder_.path(),
                                       {{"TARVO_TEST_CONFIGURATION", configuration_}});
        std::this_thread::sleep_for(delay);
        kill(pid, SIGKILL);
        int status = 0;
        waitpid(pid, &status, 0);
        ++(WIFSIGNALED(status) ? killed_ : finished_);
        awaitIdleServer();
        return WIFSIGNALED(status);
    }

    // The server may still run what a killed kernel had sent ahead, up to its commit: the store is looked at
    // only when the kernel's session has ended.
    void awaitIdleServer() {
        const std::string others =
            "SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND "
            "pid <> pg_backend_pid()";
        const Clock::time_point end = Clock::now() + std::chrono::seconds(30);
        while (database_.column(others).front() != "0") {
            ASSERT_LT(Clock::now(), end) << "a killed kernel's session does not end";
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }

    std::string contents(int root) { return caseContents(database_, root); }
    std::vector<int> roots() { return caseRoots(database_); }

    // Nodes outside the block of the case that they name as their root, or naming a node that is no root.
    int strayNodes() {
        return std::stoi(database_
                             .column("SELECT count(*) FROM n x WHERE NOT EXISTS (SELECT 1 FROM n r WHERE "
                                     "r.id = x.root AND r.parent = r.id "
                                     "AND x.id >= r.id AND x.id < r.id + r.range)")
                             .front());
    }

    // The case calculates, and one created and never calculated comes out as the first copy did.
    void expectCalculates(int root) {
        const bool fresh = contents(root) == asCreated_;
        const TarvoRun r = run({"calculate", std::to_string(root)});
        EXPECT_EQ(r.exitCode, 0) << root << ": " << r.err;
        if (fresh) {
            EXPECT_EQ(contents(root), asCalculated_) << root;
        }
    }

    // A kill of `create` left no case or one whole case as created, which calculates.
    void expectNoneOrWhole(const Words& create) {
        const std::vector<int> before = roots();
        const bool killed = killAtRandom(create, span_);
        std::vector<int> added;
        for (int id : roots())
            if (!std::binary_search(before.begin(), before.end(), id)) added.push_back(id);
        ASSERT_LE(added.size(), 1u);
        EXPECT_EQ(strayNodes(), 0);
        if (added.empty()) return;
        kept_ += killed;
        EXPECT_EQ(contents(added.front()), asCreated_) << added.front();
        expectCalculates(added.front());
    }

    void TearDown() override {
        std::cout << "killed while working " << killed_ << " (the store kept the work of " << kept_
                  << "), after the end " << finished_ << std::endl;
    }

    TemporaryDatabase database_;
    TemporaryFolder folder_;
    const std::string configuration_ = folder_.path() + "/TARVO.conf";
    std::mt19937 random_{24};
    int original_ = -1;
    std::string asCreated_, asCalculated_;
    Clock::duration span_{};
    int killed_ = 0, kept_ = 0, finished_ = 0;
};

} // namespace

TEST_F(KilledKernel, NewLeavesNoCaseOrAWholeOne) {
    span_ = span([] { return Words{"new", "Test<Membrane12Rtsc>"}; });
    for (int trial = 0; trial < trials; ++trial) {
        SCOPED_TRACE(trial);
        expectNoneOrWhole({"new", "Test<Membrane12Rtsc>"});
    }
}

TEST_F(KilledKernel, DuplicateLeavesNoCopyOrAWholeOne) {
    span_ = span([&] { return Words{"duplicate", std::to_string(original_)}; });
    for (int trial = 0; trial < trials; ++trial) {
        SCOPED_TRACE(trial);
        expectNoneOrWhole({"duplicate", std::to_string(original_)});
    }
}

TEST_F(KilledKernel, CalculateLeavesTheCaseAsBeforeOrAsCalculated) {
    span_ = span([&] {
        return Words{"calculate", std::to_string(created({"duplicate", std::to_string(original_)}))};
    });
    for (int trial = 0; trial < trials; ++trial) {
        SCOPED_TRACE(trial);
        const int copy = created({"duplicate", std::to_string(original_)});
        const bool killed = killAtRandom({"calculate", std::to_string(copy)}, span_);
        const std::string left = contents(copy);
        kept_ += killed && left == asCalculated_;
        EXPECT_TRUE(left == asCreated_ || left == asCalculated_) << copy << ":\n" << left;
        EXPECT_EQ(strayNodes(), 0);
        expectCalculates(copy);
    }
}

TEST_F(KilledKernel, RemoveLeavesTheWholeCaseOrNothingOfIt) {
    const int size =
        std::stoi(database_.column("SELECT range FROM n WHERE id = " + std::to_string(original_)).front());
    span_ = span([&] {
        return Words{"remove", std::to_string(created({"duplicate", std::to_string(original_)}))};
    });
    for (int trial = 0; trial < trials; ++trial) {
        SCOPED_TRACE(trial);
        const int copy = created({"duplicate", std::to_string(original_)});
        const bool killed = killAtRandom({"remove", std::to_string(copy)}, span_);
        EXPECT_EQ(strayNodes(), 0);
        const std::vector<int> left = roots();
        const bool removed = !std::binary_search(left.begin(), left.end(), copy);
        kept_ += killed && removed;
        if (!removed) {
            EXPECT_EQ(contents(copy), asCreated_) << copy;
            expectCalculates(copy);
        } else {
            const auto rows = [&](const std::string& table, const std::string& column) {
                return database_
                    .column("SELECT count(*) FROM " + table + " WHERE " + column + " >= " +
                            std::to_string(copy) + " AND " + column + " < " + std::to_string(copy + size))
                    .front();
            };
            EXPECT_EQ(rows("n", "id"), "0");
            EXPECT_EQ(rows("q", "nid"), "0");
            EXPECT_EQ(rows("qv", "nid"), "0");
        }
    }
}
