#pragma once

#include <fstream>
#include <string>

namespace Bench {

// A process's resident memory (VmRSS), this one's by default, in MiB; -1 when it cannot be read.
inline long residentMiB(const std::string &pid = "self")
{
    std::ifstream status("/proc/" + pid + "/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmRSS:", 0) == 0)
            return std::stol(line.substr(6)) / 1024;
    }
    return -1;
}

} // namespace Bench
