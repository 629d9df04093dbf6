#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace orvane {

/// Processors of this machine, at least 1.
inline std::size_t processorCount()
{
    return std::max<std::size_t>(1, std::thread::hardware_concurrency());
}

/// Calls `job` with 0 to `jobs` - 1, each once, on at most `threads` threads, the caller's being one, and returns when
/// all are done. Where the system has no thread to give, the caller does the work. The first exception of a job is
/// passed on once all are done.
template <typename Job>
void inParallel(std::size_t jobs, std::size_t threads, const Job& job)
{
    std::atomic<std::size_t> next{0};
    std::once_flag hasFailed;
    std::exception_ptr failure;
    const auto work = [&] {
        for (std::size_t index = next++; index < jobs; index = next++) {
            try {
                job(index);
            } catch (...) {
                std::call_once(hasFailed, [&] { failure = std::current_exception(); });
            }
        }
    };
    {
        std::vector<std::jthread> helpers;
        try {
            for (std::size_t helper = 1; helper < std::min(jobs, threads); ++helper)
                helpers.emplace_back(work);
        } catch (const std::system_error&) {
        }
        work();
    }
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace orvane
