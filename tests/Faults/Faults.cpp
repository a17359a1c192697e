#include "tests/Faults/Faults.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

// Written by one thread at a time: the operations under test run on one, which another waits for.
bool isArmed = false;
Faults::Fault current;
Faults::Outcome outcome;
int calls = 0;

bool IsHit() {
    if (!isArmed) {
        return false;
    }
    ++calls;
    const bool isHit = calls == current.number || (current.onwards && calls > current.number);
    outcome.hasStruck |= isHit;
    return isHit;
}

/// Whether the system call that asks fails; `errno` is set then.
bool Fails() {
    if (current.error == 0 || !IsHit()) {
        return false;
    }
    if (current.error == Faults::killed) {
        raise(SIGKILL);
    }
    errno = current.error;
    return true;
}

/// How many of `size` bytes are moved.
std::size_t Moved(std::size_t size) { return current.error == 0 && IsHit() ? (size + 1) / 2 : size; }

/// Calls the C library's own function, which this program's stands before.
template <auto function, class... Arguments>
auto Pass(const char* name, Arguments... arguments) {
    static const auto next = reinterpret_cast<decltype(function)>(dlsym(RTLD_NEXT, name));
    return next(arguments...);
}

/// The same, unless the call fails.
template <auto function, class... Arguments>
auto Call(const char* name, Arguments... arguments) {
    decltype(function(arguments...)) failure{};
    if constexpr (!std::is_pointer_v<decltype(failure)>) {
        failure = -1;
    }
    return Fails() ? failure : Pass<function>(name, arguments...);
}

auto CountThreads() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), std::filesystem::directory_iterator());
}

} // namespace

Faults::Answers Faults::answers;

Faults::Outcome Faults::Strike(const Fault& fault, const std::function<void()>& action) {
    const auto threads = CountThreads();
    current = fault;
    outcome = {};
    calls = 0;
    isArmed = true;
    action();
    isArmed = false;
    for (int i = 0; i < 10000 && CountThreads() > threads; ++i) { // they may still be at work
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return outcome;
}

using Faults::answers;

extern "C" {

std::FILE* fopen(const char* path, const char* mode) { return Call<&::fopen>("fopen", path, mode); }

int fclose(std::FILE* stream) {
    const bool fails = Fails();
    if (fails) {
        __fpurge(stream); // what was buffered does not reach the disk
    }
    const int result = Pass<&::fclose>("fclose", stream);
    return fails ? EOF : result;
}

std::size_t fread(void* data, std::size_t size, std::size_t count, std::FILE* stream) {
    return Fails() ? 0 : Pass<&::fread>("fread", data, size, Moved(count), stream);
}

std::size_t fwrite(const void* data, std::size_t size, std::size_t count, std::FILE* stream) {
    const std::size_t moved = Fails() ? 0 : Moved(count);
    outcome.hasStruckWriting |= moved != count;
    return Pass<&::fwrite>("fwrite", data, size, moved, stream);
}

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return Call<&::open>("open", path, flags, mode);
}

ssize_t read(int descriptor, void* data, std::size_t size) {
    return Call<&::read>("read", descriptor, data, Moved(size));
}

ssize_t write(int descriptor, const void* data, std::size_t size) {
    return Call<&::write>("write", descriptor, data, Moved(size));
}

int close(int descriptor) {
    const bool fails = Fails();
    const int result = Pass<&::close>("close", descriptor);
    return fails ? -1 : result;
}

DIR* opendir(const char* path) { return Call<&::opendir>("opendir", path); }
dirent* readdir(DIR* stream) {
    dirent* const entry = Call<&::readdir>("readdir", stream);
    if (entry != nullptr && answers.typesUnknown) {
        entry->d_type = DT_UNKNOWN;
    }
    return entry;
}
int stat(const char* path, struct stat* status) noexcept { return Call<&::stat>("stat", path, status); }
int remove(const char* path) noexcept { return Call<&::remove>("remove", path); }
int unlink(const char* path) noexcept { return Call<&::unlink>("unlink", path); }
int unlinkat(int folder, const char* path, int flags) noexcept {
    return Call<&::unlinkat>("unlinkat", folder, path, flags);
}
int mkdir(const char* path, mode_t mode) noexcept { return Call<&::mkdir>("mkdir", path, mode); }
int rename(const char* from, const char* to) noexcept {
    return answers.volumesApart ? -1 : Call<&::rename>("rename", from, to);
}
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* data) noexcept {
    return Call<&::pthread_create>("pthread_create", thread, attributes, start, data);
}

int usleep(useconds_t microseconds) {
    if (answers.slept < 0) {
        return Pass<&::usleep>("usleep", microseconds);
    }
    answers.slept += microseconds;
    return 0;
}

int clock_gettime(clockid_t clock, timespec* now) noexcept {
    if (answers.slept < 0) {
        return Pass<&::clock_gettime>("clock_gettime", clock, now);
    }
    *now = {answers.slept / 1000000, answers.slept % 1000000 * 1000};
    return 0;
}
}
