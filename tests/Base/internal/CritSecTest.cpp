#include <FrameworkBase/Base/internal/CritSec.h>

#include <future>
#include <gtest/gtest.h>

TEST(CritSec, OneThreadAtATimeAsOftenAsItLikes) {
    Tolvex::Sync::CCritSec lock;
    const auto isFreeForOthers = [&lock] {
        return std::async(std::launch::async, [&lock] { return lock.try_lock() && (lock.unlock(), true); }).get();
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
