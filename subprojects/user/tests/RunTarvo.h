#ifndef TARVO_USER_TESTS_RUNTARVO_H
#define TARVO_USER_TESTS_RUNTARVO_H

#include <string>
#include <vector>

// One run of the tarvo executable in a fresh temporary folder, as a user would start it.
struct TarvoRun {
    int exitCode = -1;
    std::string out;
    std::string err;
    std::string idTxt; // contents of id.txt, empty when it was not written
    std::string folder;
};

TarvoRun runTarvo(const std::vector<std::string>& words, const std::string& folder = "");

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
