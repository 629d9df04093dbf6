#include "mastering/arithmetic/InParallel.h"

#include <gmock/gmock.h>
#include <set>
#include <stdexcept>

using orvane::inParallel;

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
