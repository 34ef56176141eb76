#pragma once

namespace printman {

/// Which page a page function is asked for; it converts to the int that these functions take.
enum PageRequest {
    page_current = 0,
    page_first = 1,
    page_next = 2,
    page_previous = 3,
    page_last = 4
};

} // namespace printman
