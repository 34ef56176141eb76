#pragma once

#include <functional>

/// Called by long operations after each page: @p done pages of @p total are through. Answer false
/// to stop the operation, which then fails and leaves an earlier output file as it was.
using PrintmanProgress = std::function<bool(int done, int total)>;
