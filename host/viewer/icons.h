#pragma once

#include <QIcon>

namespace host {

/// The icons of the viewer's actions.
enum class Picture {
    open,
    first_page,
    previous_page,
    next_page,
    last_page,
    zoom_in,
    zoom_out,
    find,
    copy,
    save_text,
    export_pdf,
    print,
    help,
};

/// The icon of the desktop's theme where the theme has all of them, so that they fit together; else
/// a line drawing in the palette's text colour, crisp at any size.
QIcon icon_of(Picture picture);

/// That drawing.
QIcon drawn_icon(Picture picture);

/// The program's own icon: a report's page.
QIcon window_icon();

} // namespace host
