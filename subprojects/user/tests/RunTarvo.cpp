#include "RunTarvo.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

std::string readFile(const std::string& path) {
    std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tarvo-test-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
}

TemporaryFolder::~TemporaryFolder() { std::filesystem::remove_all(path_); }

pid_t startProgram(const std::string& program, const std::vector<std::string>& words, const std::string& folder,
                   const std::vector<std::pair<std::string, std::string>>& environment) {
    const pid_t pid = fork();
    if (pid == 0) {
        if (chdir(folder.c_str()) != 0) _exit(127);
        for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
        const int o = open("stdout", O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int e = open("stderr", O_WRONLY | O_CREAT | O_TRUNC, 0644);
        dup2(o, 1);
        dup2(e, 2);
        std::vector<char*> argv;
        std::string name = program;
        argv.push_back(name.data());
        std::vector<std::string> copies(words);
        for (auto& w : copies) argv.push_back(w.data());
        argv.push_back(nullptr);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    return pid;
}

TarvoRun runProgram(const std::string& program, const std::vector<std::string>& words, const std::string& folder,
                    const std::vector<std::pair<std::string, std::string>>& environment) {
    TarvoRun run;
    const std::string out = folder + "/stdout", err = folder + "/stderr";
    const pid_t pid = startProgram(program, words, folder, environment);
    int status = 0;
    waitpid(pid, &status, 0);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = readFile(out);
    run.err = readFile(err);
    if (std::filesystem::exists(folder + "/id.txt")) run.idTxt = readFile(folder + "/id.txt");
    std::filesystem::remove(folder + "/id.txt");
    return run;
}

std::string program(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::stringstream directories(path ? path : "");
    for (std::string directory; std::getline(directories, directory, ':');) {
        const std::filesystem::path candidate = std::filesystem::path(directory) / name;
        if (!directory.empty() && access(candidate.c_str(), X_OK) == 0) return candidate;
    }
    return "";
}

TarvoRun browseHeadless(const std::string& url, const std::string& folder, bool fileAccess) {
    static int browsed = 0;
    const std::string profile = folder + "/profile" + std::to_string(browsed++);
    std::filesystem::create_directory(profile);
    std::vector<std::string> words{"--headless",
                                   "--no-sandbox",
                                   "--disable-gpu",
                                   "--disable-quic",
                                   "--no-first-run",
                                   "--disable-background-networking",
                                   "--disable-component-update",
                                   "--disable-sync",
                                   "--user-data-dir=" + profile,
                                   "--enable-logging=stderr",
                                   "--v=0"};
    if (fileAccess) words.push_back("--allow-file-access-from-files"); // style sheets beside the file
    words.push_back("--dump-dom");
    words.push_back(url);
    return runProgram(program("chromium"), words, folder);
}
