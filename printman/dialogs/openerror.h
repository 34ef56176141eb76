#pragma once

class QWidget;

namespace printman {

/// Shows the user that the file @p path cannot be written, and waits until the box is closed. A
/// program without widgets shows nothing. While the box is open everything may be closed, the
/// manager too: the caller returns without touching it.
///
/// @param parent of the box, which goes with it; may be null
void show_open_error(QWidget* parent, const char* path);

} // namespace printman
