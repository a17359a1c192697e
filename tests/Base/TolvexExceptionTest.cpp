#include "tests/support/Tables.h"
#include <FrameworkBase/Files/FileStream.h>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <typeinfo>

static_assert(sizeof(TolvexException) == sizeof(void*) + sizeof(std::string)); // other modules make them

TEST(TolvexException, RefersToATextThatIsGone) {
    TolvexException exception(std::string("Error opening file").c_str());
    exception.KeyFunction();
    EXPECT_EQ(exception.message, "Error opening file");
    EXPECT_EQ(TolvexException("").message + TolvexException(nullptr).message, "");
}

TEST(TolvexException, ModulesDoNotCatchWhatOthersThrow) {
    void* const module = dlopen(EXCEPTION_MODULE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    using Rethrow = void(void (*)(), const std::type_info*&);
    auto* const rethrow = reinterpret_cast<Rethrow*>(dlsym(module, "Rethrow"));
    const std::type_info* caught = nullptr;
    const auto openMissingFile = [] { FlapFiles::CFile().DoCreate("/no/such/file", 0, 0, 0); };
    EXPECT_EQ(MessageOf([&] { rethrow(openMissingFile, caught); }), "[Error opening file]");
    EXPECT_EQ(MessageOf([&] { rethrow([] { throw TolvexException("ours"); }, caught); }), "[ours]");
    EXPECT_EQ(caught, &typeid(TolvexException)) << "a type record for each module";
}
