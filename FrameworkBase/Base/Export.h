#pragma once

/// Marks what other modules may call. All other names stay inside the library.
#define FRAMEWORKBASE_EXPORT __attribute__((visibility("default")))
