#include "FrameworkBase/Base/TolvexException.h"

#include "tests/support/VirtualSlot.h"

#include <exception>
#include <gtest/gtest.h>
#include <type_traits>

namespace {

static_assert(!std::is_convertible_v<TolvexException*, std::exception*>);
static_assert(std::has_virtual_destructor_v<TolvexException>);
static_assert(sizeof(TolvexException) == sizeof(void*) + sizeof(std::string)); // other modules make them

TEST(TolvexException, HoldsACopyOfItsText) {
    std::string text = "Error opening file";
    TolvexException exception(text.c_str());
    text.assign(text.size(), '-');
    const TolvexException copy = exception;
    exception.message += '!';
    exception.KeyFunction();
    EXPECT_EQ(exception.message, "Error opening file!");
    EXPECT_EQ(copy.message, "Error opening file");
}

TEST(TolvexException, NullAndEmptyTextGiveAnEmptyMessage) {
    EXPECT_EQ(TolvexException(nullptr).message, "");
    EXPECT_EQ(TolvexException("").message, "");
}

TEST(TolvexException, KeyFunctionFollowsTheTwoFormsOfTheDestructor) {
    EXPECT_EQ(VirtualSlot(&TolvexException::KeyFunction), 2U);
}

} // namespace
