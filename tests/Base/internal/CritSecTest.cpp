#include "FrameworkBase/Base/internal/CritSec.h"

#include <future>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>

using Tolvex::Sync::CCritSec;

namespace {

TEST(CritSec, TheOwnerLocksAgainAndUnlocksAsManyTimes) {
    CCritSec lock;
    const auto isFreeForOthers = [&lock] {
        return std::async(std::launch::async,
                          [&lock] {
                              const std::unique_lock<CCritSec> attempt(lock, std::try_to_lock);
                              return attempt.owns_lock();
                          })
            .get();
    };
    EXPECT_TRUE(isFreeForOthers());
    lock.lock();
    lock.lock();
    EXPECT_TRUE(lock.try_lock());
    for (int held = 3; held > 0; --held) {
        EXPECT_FALSE(isFreeForOthers()) << held;
        lock.unlock();
    }
    EXPECT_TRUE(isFreeForOthers());
}

TEST(CritSec, OneThreadAtATime) {
    CCritSec lock;
    int count = 0;
    const auto work = [&] {
        for (int i = 0; i < 100000; ++i) {
            const std::lock_guard<CCritSec> outer(lock);
            const std::lock_guard<CCritSec> inner(lock);
            ++count;
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(count, 200000);
}

} // namespace
