#pragma once

/// Marks what libprintman exports; everything else is built with hidden visibility.
#define PRINTMAN_EXPORT [[gnu::visibility("default")]]
