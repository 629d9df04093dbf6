#include "benchmarks/Report.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>

namespace orvane::bench {
namespace {

double statusMebibytes(std::string_view field)
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.starts_with(field))
            return std::stod(line.substr(field.size())) / 1024.0;
    }
    return 0.0;
}

void printStart(std::string_view name, double value, std::string_view unit)
{
    std::printf("%.*s\t%.4g\t%.*s\t", static_cast<int>(name.size()), name.data(), value, static_cast<int>(unit.size()),
                unit.data());
}

} // namespace

void report(std::string_view name, double value, std::string_view unit)
{
    printStart(name, value, unit);
    std::printf("-\t-\t-\n");
    std::fflush(stdout);
}

void report(std::string_view name, double value, std::string_view unit, std::string_view peer, double peerValue)
{
    printStart(name, value, unit);
    std::printf("%.*s\t%.4g\t%.3g\n", static_cast<int>(peer.size()), peer.data(), peerValue, value / peerValue);
    std::fflush(stdout);
}

double seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double residentMebibytes()
{
    return statusMebibytes("VmRSS:");
}

double peakResidentMebibytes()
{
    return statusMebibytes("VmHWM:");
}

} // namespace orvane::bench
