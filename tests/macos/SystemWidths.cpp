// What the library relies on in the headers of macOS. Compiled only.
#include <FrameworkBase/Base/Platform.h>
#include <FrameworkBase/Base/TolvexException.h>
#include <FrameworkBase/Base/internal/CritSec.h>

#include <dirent.h>
#include <sys/param.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <type_traits>
#include <unistd.h>

// Free blocks are counted in 32 bits, so the product with the block size needs the wider type of its result.
static_assert(sizeof(fsblkcnt_t) == 4 && std::is_unsigned_v<fsblkcnt_t>);
static_assert(std::is_same_v<decltype(statvfs::f_bavail), fsblkcnt_t> && sizeof(statvfs::f_bsize) == 8);
static_assert(sizeof(off_t) == 8 && sizeof(ino_t) == 8 && sizeof(long) == 8);
static_assert(sizeof(pid_t) == 4 && std::is_signed_v<pid_t>, "process handles are sign-extended from 32 bits");
static_assert(sizeof(wchar_t) == 4, "one code point per wchar_t");
static_assert(std::is_same_v<decltype(dirent::d_type), std::uint8_t> && DT_UNKNOWN == 0 && DT_DIR == 4);
static_assert(std::is_same_v<decltype(stat::st_mtimespec), timespec>, "times have other names than on Linux");
static_assert(PATH_MAX == 1024, "the longest result of realpath, within the 1040 bytes of the library's path buffers");

// What other modules compile in. They are built with the system's C++ library, as this one is.
static_assert(std::is_pointer_v<os_workgroup_t>);
static_assert(sizeof(std::string) == 24 && sizeof(TolvexException) == 32);
static_assert(sizeof(Tolvex::Sync::CCritSec) == sizeof(pthread_mutex_t) && sizeof(pthread_mutex_t) == 64);
