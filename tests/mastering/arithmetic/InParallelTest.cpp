#include "mastering/arithmetic/InParallel.h"

#include <ctime>
#include <gmock/gmock.h>
#include <set>
#include <stdexcept>
#include <unistd.h>

using orvane::inParallel;

namespace {

double processorSecondsOfThisThread()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

} // namespace

TEST(InParallel, thereAreAsManyProcessorsAsTheSystemSays)
{
    EXPECT_EQ(orvane::processorCount(), std::size_t(::sysconf(_SC_NPROCESSORS_ONLN)));
}

TEST(InParallel, callsEachJobOnce)
{
    for (const std::size_t threads : {0u, 1u, 2u, 8u}) {
        for (const std::size_t jobs : {0u, 1u, 2u, 7u, 100u}) {
            std::vector<std::atomic<int>> calls(jobs);
            inParallel(jobs, threads, [&](std::size_t job) { ++calls[job]; });
            for (const auto& count : calls)
                EXPECT_EQ(count, 1) << jobs << " on " << threads;
        }
    }
}

TEST(InParallel, worksOnNoMoreThreadsThanItMay)
{
    for (const std::size_t threads : {1u, 2u, 3u}) {
        std::mutex lock;
        std::set<std::thread::id> seen;
        inParallel(100'000, threads, [&](std::size_t) {
            const std::lock_guard guard(lock);
            seen.insert(std::this_thread::get_id());
        });
        EXPECT_LE(seen.size(), threads);
        EXPECT_TRUE(threads > 1 || seen.contains(std::this_thread::get_id()));
    }
}

TEST(InParallel, worksOnAsManyThreadsAsItMay)
{
    for (const std::size_t threads : {1u, 2u, 3u}) {
        std::atomic<std::size_t> begun{0};
        std::atomic<int> alone{0};
        // Each job goes on only once all have begun, or a second of its own work long.
        inParallel(threads, threads, [&](std::size_t) {
            ++begun;
            const double start = processorSecondsOfThisThread();
            while (begun < threads && processorSecondsOfThisThread() < start + 1.0)
                std::this_thread::yield();
            alone += begun < threads;
        });
        EXPECT_EQ(alone, 0) << threads;
    }
}

TEST(InParallel, passesOnWhatAJobThrowsOnceAllAreDone)
{
    for (const std::size_t threads : {1u, 4u}) {
        std::vector<std::atomic<int>> calls(20);
        const auto job = [&](std::size_t index) {
            ++calls[index];
            if (index % 5 == 3)
                throw std::runtime_error("a job failed");
        };
        EXPECT_THROW(inParallel(calls.size(), threads, job), std::runtime_error);
        for (const auto& count : calls)
            EXPECT_EQ(count, 1);
    }
}
