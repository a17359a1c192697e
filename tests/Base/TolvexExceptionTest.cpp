#include "FrameworkBase/Base/TolvexException.h"

#include <exception>
#include <gtest/gtest.h>

namespace {

static_assert(!std::is_convertible_v<TolvexException*, std::exception*> &&
              std::has_virtual_destructor_v<TolvexException>);
static_assert(sizeof(TolvexException) == sizeof(void*) + sizeof(std::string)); // other modules make them

TEST(TolvexException, HoldsACopyOfItsText) {
    std::string text = "Error opening file";
    TolvexException exception(text.c_str());
    text[0] = '-';
    const TolvexException copy = exception;
    exception.message += '!';
    exception.KeyFunction();
    EXPECT_EQ(exception.message, "Error opening file!");
    EXPECT_EQ(copy.message, "Error opening file");
    EXPECT_EQ(TolvexException("").message, "");
    EXPECT_EQ(TolvexException(nullptr).message, "");
}

} // namespace
