#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

// The calls of the trash module that the library does not make. They fail with those of Faults.h, and count with them.

namespace {

/// Returns true if the present fault strikes here: it strikes a call that can have only one other error.
bool Fails() { return unlink("") != 0 && errno != ENOENT; }

template <auto function, class... Arguments>
auto Call(const char* name, Arguments... arguments) {
    static const auto next = reinterpret_cast<decltype(function)>(dlsym(RTLD_NEXT, name));
    return Fails() ? -1 : next(arguments...);
}

} // namespace

extern "C" {

int access(const char* path, int rights) noexcept { return Call<&::access>("access", path, rights); }
int flock(int descriptor, int operation) noexcept { return Call<&::flock>("flock", descriptor, operation); }
int linkat(int from, const char* path, int to, const char* target, int flags) noexcept {
    return Call<&::linkat>("linkat", from, path, to, target, flags);
}
int lstat(const char* path, struct stat* status) noexcept { return Call<&::lstat>("lstat", path, status); }
int rmdir(const char* path) noexcept { return Call<&::rmdir>("rmdir", path); }
char* mkdtemp(char* path) noexcept {
    static const auto next = reinterpret_cast<char* (*)(char*)>(dlsym(RTLD_NEXT, "mkdtemp"));
    return Fails() ? nullptr : next(path);
}
}
