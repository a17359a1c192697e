#pragma once

#include <FrameworkBase/Base/TolvexException.h>

#include <gmock/gmock.h>
#include <string>

/// Matches a function that throws a TolvexException with this message.
inline auto ThrowsTolvexException(const std::string& message) {
    return testing::Throws<TolvexException>(testing::Field("message", &TolvexException::message, message));
}
