#include "tests/Faults/Faults.h"

#include "tests/Faults/Allocations.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <new>
#include <pthread.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Faults::Target;

// Written by one thread at a time: the operations under test run on one, which another waits for.
bool armed = false;
bool volumesApart = false;
Faults::Fault current;
Faults::Outcome outcome;
int calls = 0;
std::atomic<std::ptrdiff_t> allocations{0};

std::array<std::FILE*, 64> openStreams{}; ///< those opened since Arm; null where there is none

/// Counts a call. Whether it is to fail.
bool IsHit(Target target) {
    if (!armed || current.target != target) {
        return false;
    }
    ++calls;
    const bool hit = calls == current.number || (current.onwards && calls > current.number);
    outcome.hasStruck |= hit;
    return hit;
}

/// Whether the system call that asks fails; `errno` is set then.
bool Fails() {
    if (current.error == 0 || !IsHit(Target::Calls)) {
        return false;
    }
    errno = current.error;
    return true;
}

/// How many of `size` bytes are moved: all, half, or none, with `errno` set.
std::size_t Moved(std::size_t size) {
    if (!IsHit(Target::Calls)) {
        return size;
    }
    errno = current.error;
    return current.error == 0 ? (size + 1) / 2 : 0;
}

/// Calls the C library's own function, which this program's stands before.
template <auto function, class... Arguments>
auto Pass(const char* name, Arguments... arguments) {
    static const auto next = reinterpret_cast<decltype(function)>(dlsym(RTLD_NEXT, name));
    return next(arguments...);
}

template <auto function, class Result, class... Arguments>
Result Call(const char* name, Result failure, Arguments... arguments) {
    return Fails() ? failure : Pass<function>(name, arguments...);
}

} // namespace

void Faults::Arm(const Fault& fault) {
    current = fault;
    outcome = {};
    calls = 0;
    allocations = 0;
    armed = true;
}

Faults::Outcome Faults::Disarm() {
    armed = false;
    for (std::FILE* const stream : openStreams) {
        if (stream != nullptr) {
            ++outcome.streamsLeftOpen;
            std::fclose(stream);
        }
    }
    return outcome;
}

std::ptrdiff_t Faults::AllocationsLeft() { return allocations; }

void Faults::SetVolumesApart(bool apart) { volumesApart = apart; }

void OnAllocate(std::size_t /*size*/) {
    if (IsHit(Target::Allocations)) {
        throw std::bad_alloc();
    }
    ++allocations;
}

void OnRelease() noexcept { --allocations; }

extern "C" {

std::FILE* fopen(const char* path, const char* mode) {
    std::FILE* const stream = Call<&::fopen>("fopen", static_cast<std::FILE*>(nullptr), path, mode);
    if (armed && stream != nullptr) {
        *std::find(openStreams.begin(), openStreams.end(), nullptr) = stream;
    }
    return stream;
}

int fclose(std::FILE* stream) {
    std::replace(openStreams.begin(), openStreams.end(), stream, static_cast<std::FILE*>(nullptr));
    const bool fails = Fails();
    if (fails) {
        __fpurge(stream); // what was buffered does not reach the disk
    }
    const int result = Pass<&::fclose>("fclose", stream);
    return fails ? EOF : result;
}

std::size_t fread(void* data, std::size_t size, std::size_t count, std::FILE* stream) {
    return Pass<&::fread>("fread", data, size, Moved(count), stream);
}

std::size_t fwrite(const void* data, std::size_t size, std::size_t count, std::FILE* stream) {
    const std::size_t moved = Moved(count);
    outcome.hasStruckWriting |= moved != count;
    return Pass<&::fwrite>("fwrite", data, size, moved, stream);
}

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return Call<&::open>("open", -1, path, flags, mode);
}

ssize_t read(int descriptor, void* data, std::size_t size) {
    const std::size_t moved = Moved(size);
    return moved == 0 && size != 0 ? -1 : Pass<&::read>("read", descriptor, data, moved);
}

ssize_t write(int descriptor, const void* data, std::size_t size) {
    const std::size_t moved = Moved(size);
    return moved == 0 && size != 0 ? -1 : Pass<&::write>("write", descriptor, data, moved);
}

int close(int descriptor) {
    const bool fails = Fails();
    const int result = Pass<&::close>("close", descriptor);
    return fails ? -1 : result;
}

DIR* opendir(const char* path) { return Call<&::opendir>("opendir", static_cast<DIR*>(nullptr), path); }
dirent* readdir(DIR* stream) { return Call<&::readdir>("readdir", static_cast<dirent*>(nullptr), stream); }
int stat(const char* path, struct stat* status) noexcept { return Call<&::stat>("stat", -1, path, status); }
int remove(const char* path) noexcept { return Call<&::remove>("remove", -1, path); }
int unlink(const char* path) noexcept { return Call<&::unlink>("unlink", -1, path); }
int unlinkat(int folder, const char* path, int flags) noexcept {
    return Call<&::unlinkat>("unlinkat", -1, folder, path, flags);
}
int mkdir(const char* path, mode_t mode) noexcept { return Call<&::mkdir>("mkdir", -1, path, mode); }
int rename(const char* from, const char* to) noexcept {
    return volumesApart ? -1 : Call<&::rename>("rename", -1, from, to);
}
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* data) noexcept {
    return Call<&::pthread_create>("pthread_create", EAGAIN, thread, attributes, start, data);
}
}
