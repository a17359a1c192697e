#include <FrameworkBase/FileNames/FileTypes.h>

#include <array>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>

namespace {

struct Construction {
    void (*destroy)(void*);
    void* object;
};
std::vector<Construction>* constructions = nullptr; // those of the library while it is loaded

/// What an `awk` program prints of the library's symbols: address, kind and name.
std::string OfSymbols(const std::string& program) {
    std::FILE* const output = popen(("nm '" LIBRARY "' | awk '" + program + "'").c_str(), "r");
    std::array<char, 64> text{};
    EXPECT_GT(std::fread(text.data(), 1, text.size() - 1, output), 0U) << program;
    pclose(output);
    return text.data();
}

} // namespace

/// Called for each object constructed at load, to have it destroyed at exit. The program's own definition comes first.
extern "C" int __cxa_atexit(void (*destroy)(void*), void* object, void* module) {
    if (constructions != nullptr) {
        constructions->push_back({destroy, object});
    }
    static const auto next = reinterpret_cast<decltype(&__cxa_atexit)>(dlsym(RTLD_NEXT, "__cxa_atexit"));
    return next(destroy, object, module);
}

TEST(LoadOrder, TheseObjectsAndNoOthersInThisOrder) {
    std::vector<Construction> made;
    constructions = &made;
    void* const library = dlopen(LIBRARY, RTLD_NOW);
    constructions = nullptr;
    link_map* map = nullptr;
    ASSERT_EQ(dlinfo(library, RTLD_DI_LINKMAP, &map), 0) << dlerror();
    const auto address = [&](const std::string& name) {
        const std::string offset = OfSymbols("/ [BbDd] [^.]*" + name + "/ { print $1 }");
        return reinterpret_cast<void*>(map->l_addr + std::stoul(offset, nullptr, 16));
    };
    ASSERT_EQ(made.size(), 34U);
    EXPECT_EQ(made[31].object, address("trashDB"));
    ASSERT_EQ(made[32].object, address("pathFolderOverride"));
    EXPECT_EQ(made[33].object, address("threadsJoinToken"));
    for (std::size_t i = 0; i < 29; ++i) {
        ASSERT_EQ(made[i].destroy, made[32].destroy) << "not a string: " << i;
        EXPECT_EQ(*static_cast<std::string*>(made[i].object), Tolvex::FileExtensionStrings[i + 1]);
    }
    ASSERT_EQ(made[29].destroy, made[30].destroy);
    const auto list = [&](std::size_t i) { return *static_cast<std::vector<std::string>*>(made[i].object); };
    EXPECT_EQ(list(29), Tolvex::FileExtensionStrings);
    EXPECT_EQ(list(30), Tolvex::AudioAndMidiFileExtensionsString);
    // Objects that need no destruction are not told of, but a source that constructs some has a function for it.
    EXPECT_EQ(OfSymbols("/_GLOBAL__sub_I_/ && !/cold/ { n++ } END { print n }"), "3\n");
}
