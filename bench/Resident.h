#pragma once

#include <fstream>
#include <string>

namespace Bench {

// This process's resident memory (VmRSS), in MiB; -1 when it cannot be read.
inline long residentMiB()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmRSS:", 0) == 0)
            return std::stol(line.substr(6)) / 1024;
    }
    return -1;
}

} // namespace Bench
