#ifndef TARVO_USER_TESTS_RUNTARVO_H
#define TARVO_USER_TESTS_RUNTARVO_H

#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

// One run of a kernel executable in a folder, as a user would start it.
struct TarvoRun {
    int exitCode = -1;
    std::string out;
    std::string err;
    std::string idTxt; // contents of id.txt, empty when it was not written
};

// Starts `program` with `words` in `folder`, with `environment` added to the process's own, its output in
// the files "stdout" and "stderr" there; the caller waits for it.
pid_t startProgram(const std::string& program, const std::vector<std::string>& words, const std::string& folder,
                   const std::vector<std::pair<std::string, std::string>>& environment);

// Runs `program` with `words` in `folder`, with `environment` added to the process's own.
TarvoRun runProgram(const std::string& program, const std::vector<std::string>& words, const std::string& folder,
                    const std::vector<std::pair<std::string, std::string>>& environment = {});

inline TarvoRun runTarvo(const std::vector<std::string>& words, const std::string& folder) {
    return runProgram(TARVO_EXECUTABLE, words, folder);
}

// The whole text of a file; empty when it cannot be read.
std::string readFile(const std::string& path);

// The path of a program on PATH, or empty.
std::string program(const std::string& name);

// What headless Chromium makes of `url`: the document after its scripts ran as `out`, its log as `err`. It
// runs in `folder` with a profile of its own there; `fileAccess` lets a file load others beside it.
TarvoRun browseHeadless(const std::string& url, const std::string& folder, bool fileAccess = false);

// A temporary folder, removed with its contents when the object goes.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

#endif
