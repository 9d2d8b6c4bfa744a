#ifndef TARVO_PERSISTENCY_CONFIGURATION_H
#define TARVO_PERSISTENCY_CONFIGURATION_H

#include <map>
#include <optional>
#include <string>

// The settings of the section "[1.1]" of the kernel's configuration file: where the store is.
class Configuration {
public:
    // Reads `file`; `readable()` tells whether it could be opened.
    explicit Configuration(const std::string& file);
    bool readable() const { return readable_; }
    // The value behind "<key> =" in the section, or nothing when the key is absent.
    std::optional<std::string> setting(const std::string& key) const;

    // The process's configuration, "/etc/xdg/tarvo/TARVO.conf", read on first use.
    static const Configuration& kernel();
    // Another file for kernel(), for a program that links the kernel and keeps its settings elsewhere;
    // it takes effect only before the first use.
    static void useKernelFile(const std::string& file);
    // A configuration that cannot be opened ends the process: "Can not open configuration file:
    // [<file>]" on standard error, -200 in id.txt, exit code 0.
    static Configuration openOrQuit(const std::string& file);
    static constexpr const char* kernelFile = "/etc/xdg/tarvo/TARVO.conf";

private:
    bool readable_ = false;
    std::string file_;
};

#endif
