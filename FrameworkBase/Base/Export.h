#pragma once

/// Marks what other modules may call. Everything without it stays inside the library.
#define FRAMEWORKBASE_EXPORT __attribute__((visibility("default")))
