#include <tarvo/persistency/Configuration.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/IdFile.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>

namespace {

constexpr std::size_t lineLimit = 4096;

std::string unescapeLineEnds(std::string value) {
    for (auto at = value.find("\\n"); at != std::string::npos; at = value.find("\\n", at + 1)) value.replace(at, 2, "\n");
    return value;
}

} // namespace

Configuration::Configuration(const std::string& file) : file_(file) {
    std::ifstream in(file);
    readable_ = static_cast<bool>(in);
}

std::optional<std::string> Configuration::setting(const std::string& key) const {
    std::ifstream in(file_);
    std::string line;
    bool inSection = false;
    while (std::getline(in, line)) {
        if (line.size() > lineLimit) line.resize(lineLimit);
        if (!inSection) {
            inSection = line.compare(0, 5, "[1.1]") == 0;
            continue;
        }
        if (line.compare(0, key.size(), key) != 0) continue;
        // Blanks may stand between the key and "="; the value is the rest of the line, as it stands.
        std::string::size_type at = key.size();
        while (at < line.size() && line[at] == ' ') ++at;
        if (at >= line.size() || line[at] != '=') return std::string();
        return unescapeLineEnds(line.substr(at + 1));
    }
    return std::nullopt;
}

Configuration Configuration::openOrQuit(const std::string& file) {
    Configuration c(file);
    if (!c.readable()) {
        std::fprintf(stderr, "Can not open configuration file: [%s]\n", file.c_str());
        try {
            Tarvo::Utility::setIdFile(-200);
        } catch (const Error& e) {
            std::cerr << e.message();
        }
        // A failure like every other: the caller that only looks at the exit status must see it too.
        std::exit(-200);
    }
    return c;
}

namespace {
std::string& kernelFileInUse() {
    static std::string file = Configuration::kernelFile;
    return file;
}
} // namespace

void Configuration::useKernelFile(const std::string& file) { kernelFileInUse() = file; }

const Configuration& Configuration::kernel() {
    static const Configuration configuration = openOrQuit(kernelFileInUse());
    return configuration;
}
