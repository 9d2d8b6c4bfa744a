// Sixteen kernels at once, as an application that drives many cases starts them: three rounds of sixteen
// `new` and then sixteen `calculate` of the cases just made. Each gets a block of its own, and each case
// holds what one kernel alone would have stored.
#include "RunTarvo.h"
#include "StoredCases.h"
#include "TemporaryDatabase.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <sys/wait.h>

namespace {

const std::string caseType = "Test2<Membrane22Rtsc>";
constexpr int kernels = 16;
constexpr int rounds = 3;

class ConcurrentKernels : public ::testing::Test {
protected:
    void SetUp() override {
        for (auto& folder : folders_)
            folder = std::make_unique<TemporaryFolder>();
        configuration_ = folders_[0]->path() + "/TARVO.conf";
        database_.writeConfiguration(configuration_);
    }

    // Runs the command that `words(k)` gives in kernel k's own folder, all sixteen at once, and returns
    // what each left in its id.txt.
    template <typename Words> std::vector<std::string> together(Words words) {
        std::vector<pid_t> started;
        for (int k = 0; k < kernels; ++k)
            started.push_back(startProgram(TARVO_FIXTURE_EXECUTABLE, words(k), folders_[k]->path(),
                                           {{"TARVO_TEST_CONFIGURATION", configuration_}}));
        std::vector<std::string> ids;
        for (int k = 0; k < kernels; ++k) {
            int status = 0;
            waitpid(started[k], &status, 0);
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
                << "kernel " << k << ": " << read(k, "stderr");
            ids.push_back(read(k, "id.txt"));
        }
        return ids;
    }

    std::string read(int k, const std::string& file) {
        std::ifstream in(folders_[k]->path() + "/" + file);
        std::string line;
        std::getline(in, line);
        return line;
    }

    TemporaryDatabase database_;
    std::unique_ptr<TemporaryFolder> folders_[kernels];
    std::string configuration_;
};

} // namespace

TEST_F(ConcurrentKernels, SixteenAtOnceStoreWhatOneAloneStores) {
    // One at a time first: the case as created and as calculated.
    const auto alone = [&](const std::vector<std::string>& words) {
        const TarvoRun r = runProgram(TARVO_FIXTURE_EXECUTABLE, words, folders_[0]->path(),
                                      {{"TARVO_TEST_CONFIGURATION", configuration_}});
        EXPECT_EQ(r.exitCode, 0) << r.err;
        return std::atoi(r.idTxt.c_str());
    };
    const int reference = alone({"new", caseType});
    const std::string asCreated = caseContents(database_, reference);
    alone({"calculate", std::to_string(reference)});
    const std::string asCalculated = caseContents(database_, reference);
    ASSERT_NE(asCreated, asCalculated);

    std::set<std::string> everyId{std::to_string(reference)};
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        const std::vector<std::string> ids = together([](int) {
            return std::vector<std::string>{"new", caseType};
        });
        for (const std::string& id : ids) {
            EXPECT_TRUE(everyId.insert(id).second) << "id " << id << " given twice";
            EXPECT_EQ(caseContents(database_, std::atoi(id.c_str())), asCreated) << id;
        }
        const std::vector<std::string> calculated = together([&](int k) {
            return std::vector<std::string>{"calculate", ids[k]};
        });
        EXPECT_EQ(calculated, ids);
        for (const std::string& id : ids)
            EXPECT_EQ(caseContents(database_, std::atoi(id.c_str())), asCalculated) << id;
    }
    EXPECT_EQ(caseRoots(database_).size(), 1u + rounds * kernels);
}
