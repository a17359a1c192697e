#pragma once

#include <pthread.h>

namespace Tolvex::Sync {

/// A recursive mutex: the thread that holds it may lock it again, and unlocks it as often. It works with
/// `std::lock_guard`. The results of the POSIX calls are not checked.
class CCritSec {
public:
    CCritSec();
    ~CCritSec() { pthread_mutex_destroy(&mutex); }
    CCritSec(const CCritSec&) = delete;
    CCritSec& operator=(const CCritSec&) = delete;

    void lock() { pthread_mutex_lock(&mutex); }
    void unlock() { pthread_mutex_unlock(&mutex); }
    bool try_lock() { return pthread_mutex_trylock(&mutex) == 0; }

private:
    pthread_mutex_t mutex{};
};

} // namespace Tolvex::Sync
