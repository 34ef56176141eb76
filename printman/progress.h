#pragma once

#include <functional>

/// Called by long operations after each page: @p done pages of @p total are through. Answer false
/// to stop the operation, which then fails and leaves an earlier output file as it was. While a
/// tool works on what was made of the pages it is called some twenty times a second, with all pages
/// done.
using PrintmanProgress = std::function<bool(int done, int total)>;
