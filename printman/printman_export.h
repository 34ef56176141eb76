#pragma once

/// Marks what libprintman exports; everything else is built with hidden visibility.
#define PRINTMAN_EXPORT __attribute__((visibility("default")))
