#include <tarvo/core/ReplacedFile.h>

#include <cstdio>
#include <fstream>

namespace Tarvo::Core {

bool replaceFile(const std::string& path, const std::function<void(std::ostream&)>& write) {
    const std::string part = path + ".part";
    {
        std::ofstream out(part);
        if (out) write(out);
        out.close();
        if (!out) {
            std::remove(part.c_str());
            return false;
        }
    }
    if (std::rename(part.c_str(), path.c_str()) == 0) return true;
    std::remove(part.c_str());
    return false;
}

} // namespace Tarvo::Core
