#include "tests/support/TolvexExceptionMatcher.h"
#include <FrameworkBase/Files/FileStream.h>

#include <dlfcn.h>
#include <typeinfo>

static_assert(sizeof(TolvexException) == sizeof(void*) + sizeof(std::string)); // other modules make them

TEST(TolvexExceptionTest, KeepsACopyOfItsMessage) {
    TolvexException exception(std::string("Error opening file").c_str());
    exception.KeyFunction();
    EXPECT_EQ(exception.message, "Error opening file");
}

TEST(TolvexExceptionTest, HasAnEmptyMessageForNull) { EXPECT_EQ(TolvexException(nullptr).message, ""); }

TEST(TolvexExceptionTest, IsCaughtByItsTypeInAnotherModule) {
    void* const module = dlopen(EXCEPTION_MODULE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    using Rethrow = void(void (*)(), const std::type_info*&);
    auto* const rethrow = reinterpret_cast<Rethrow*>(dlsym(module, "Rethrow"));
    const std::type_info* caught = nullptr;
    const auto openMissingFile = [] { FlapFiles::CFile().DoCreate("/no/such/file", 0, 0, 0); };
    EXPECT_THAT([&] { rethrow(openMissingFile, caught); }, ThrowsTolvexException("[Error opening file]"));
    EXPECT_EQ(caught, &typeid(TolvexException)) << "a type record for each module";
}
