#pragma once

#include <QIcon>

namespace host {

/// What the viewer has pictures for.
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

/// The icon of the desktop's theme where the theme has one for every picture, so that none looks
/// out of place; else a line drawing in the palette's text colour, crisp at any size.
QIcon icon_of(Picture picture);

/// The drawing alone.
QIcon drawn_icon(Picture picture);

/// The program's own icon: a report's page.
QIcon window_icon();

} // namespace host
