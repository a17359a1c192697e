// What the library relies on in the headers of macOS, and what other modules compile in. Compiled only.
#include <FrameworkBase/Base/TolvexException.h>
#include <FrameworkBase/Base/internal/CritSec.h>

#include <climits>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <type_traits>

static_assert(sizeof(fsblkcnt_t) == 4 && sizeof(statvfs::f_bsize) == 8, "the product needs its result's type");
static_assert(sizeof(off_t) == 8 && sizeof(long) == 8 && sizeof(wchar_t) == 4);
static_assert(sizeof(pid_t) == 4 && std::is_signed_v<pid_t>, "process handles are sign-extended from 32 bits");
static_assert(PATH_MAX == 1024, "the longest result of realpath, within the 1040 bytes of the library's path buffers");
static_assert(sizeof(std::string) == 24 && sizeof(TolvexException) == 32 && sizeof(Tolvex::Sync::CCritSec) == 64);
