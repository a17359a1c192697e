#include <FrameworkBase/Trash/Trash.h>
#include <FrameworkBase/Trash/TrashCleanup.h>

#include "tests/support/DiskTest.h"

#include <dlfcn.h>
#include <pthread.h>

using namespace Tolvex::FileNames;

using SmallStack = DiskTest;

TEST_F(SmallStack, IsOverrunByATrashFunction) {
    if (dlsym(RTLD_DEFAULT, "__asan_init") != nullptr || dlsym(RTLD_DEFAULT, "__tsan_init") != nullptr) {
        GTEST_SKIP() << "sanitizers need more of the stack";
    }
#ifdef __OPTIMIZE__
    constexpr std::size_t size = std::size_t{32} * 1024;
#else
    constexpr std::size_t size = std::size_t{64} * 1024;
#endif
    std::string deep = applicationFolder + "/Trash/shallow/file, " + applicationFolder + "/Trash";
    for (int level = 0; level <= 20; ++level) {
        deep += "/level";
    }
    Make("a, " + deep + "/file");
    const auto work = [](void* file) -> void* { // each step of a host's thread on the trash
        const std::string trash = GetTrashFolderPath();
        DeleteFileToRecycleBin(static_cast<const char*>(file), true);
        CanPutBack(trash + "/a");
        PutBack(trash + "/a");
        TouchFolder(trash);
        DeleteFolderWithContents((trash + "/shallow").c_str(), false, false);
        CleanupTrashFolder(trash, false);
        CheckDeleteEmptyFolders(trash);
        CleanupTrashFolder(trash, true); // folders at every depth that is emptied
        return nullptr;
    };
    pthread_attr_t attributes{};
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, size), 0);
    pthread_t thread{};
    std::string file = Path("a");
    ASSERT_EQ(pthread_create(&thread, &attributes, work, file.data()), 0);
    pthread_join(thread, nullptr);
    EXPECT_EQ(Content(Path("a")), "a");
    EXPECT_EQ(List(applicationFolder), "Trash/, Trash/.trash.db");
}
