#include "RunTarvo.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

const std::string usageTail =
    "Correct synthax command line parameters are:\n"
    "  calculate id       : retrieve, calculate and update the object at id\n"
    "  duplicate id ta de : retrieve the object at id and save it with tag ta and and description de\n"
    "  enumerators        : list supported enumerators\n"
    "  homotopy id        : perform homotopy run of case id\n"
    "  new ty ta de '{\"stringOptions\":{\"a\":\"b\",\"c\":\"d\",\"e\":\"f\"},\"integerOptions\":{\"g\":1,\"h\":2}}'\n"
    "                     : create a new object of type ty with tag ta and description de and the supplied options\n"
    "  purge              : clean up completely the persistent storage database\n"
    "  remove id          : retrieve and remove the object at id\n"
    "  sensitivity id     : perform sensitivity run of case id\n"
    "  txt id             : retrieve the object at id and recursively print all Q, S and I to id.txt file\n"
    "  types              : list supported types\n"
    "  xml id dir         : retrieve the object at id and recursively print all Q, S and I to xml files in the "
    "directory dir\n";

class CommandLine : public ::testing::Test {
protected:
    TarvoRun run(const std::vector<std::string>& words) { return runTarvo(words, folder_.path()); }
    TemporaryFolder folder_;
};

} // namespace

TEST_F(CommandLine, WrongUsageEchoesTheLineAndWritesMinusOne) {
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"foo"},
        {"new", "Test2<Membrane22Rtsc>", "a", "b", "{}", "x"},
        {"remove"},
        {"xml", "5"},
        {"types", "extra"},
        {"t"},
    };
    for (const auto& words : wrong) {
        const TarvoRun r = run(words);
        std::string line = TARVO_EXECUTABLE;
        for (const auto& w : words) line += " " + w;
        EXPECT_EQ(r.err, "Incorrect command line parameters: " + line + "\n" + usageTail) << line;
        EXPECT_EQ(r.idTxt, "-1\n") << line;
        EXPECT_EQ(r.exitCode, 255) << line;
    }
}

TEST_F(CommandLine, BannerComesFirstOnStandardOutput) {
    const TarvoRun r = run({"types"});
    EXPECT_EQ(r.out.rfind(" * ", 0), 0u);
    EXPECT_NE(r.out.find("TARVO 1.1.285 [Mon Apr 22 18:29:56 2024 +0200]"), std::string::npos);
    EXPECT_NE(r.out.find("Process modeling demo for Gas Membrane separation"), std::string::npos);
}

TEST_F(CommandLine, CataloguesByPrefixExitZero) {
    const TarvoRun types = run({"types2"});
    EXPECT_EQ(types.exitCode, 0);
    EXPECT_EQ(types.idTxt, "0\n");
    EXPECT_NE(types.out.find("\n{\"types\":["), std::string::npos);
    EXPECT_TRUE(types.err.empty()) << types.err;

    const TarvoRun enumerators = run({"enumerators"});
    EXPECT_EQ(enumerators.exitCode, 0);
    EXPECT_EQ(enumerators.idTxt, "0\n");
    EXPECT_NE(enumerators.out.find("\n{\"enumerators\":["), std::string::npos);
}

// Without id.txt the caller cannot learn how the command ended, so the command does not start.
TEST_F(CommandLine, IdFileThatCannotBeWrittenIsReported) {
    const std::string blocked = folder_.path() + "/id.txt";
    std::filesystem::create_directory(blocked); // a folder where the file should go
    const TarvoRun r = runTarvo({"types"}, folder_.path());
    EXPECT_NE(r.err.find("cannot write id.txt file"), std::string::npos);
    EXPECT_EQ(r.out.find("{\"types\":["), std::string::npos) << r.out;
    std::filesystem::remove(blocked);
    EXPECT_EQ(r.exitCode, 256 - 3);
}

// A command that never reaches the store does not load the store's client library, which with the libraries
// that it needs is most of a process's start. The loader's own record of the files it maps tells.
TEST_F(CommandLine, CataloguesStartWithoutTheStoresClient) {
    const TarvoRun r = runProgram(TARVO_EXECUTABLE, {"types"}, folder_.path(), {{"LD_DEBUG", "files"}});
    EXPECT_EQ(r.exitCode, 0);
    ASSERT_NE(r.err.find("file=libc.so.6"), std::string::npos) << "the loader recorded nothing";
    EXPECT_EQ(r.err.find("libpq"), std::string::npos);
}
