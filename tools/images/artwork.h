#pragma once

#include <QImage>

/// The product's logo, 200 x 66 pixels, on a ground of its own that suits light and dark dialogs.
QImage draw_logo();

/// The same in small, 68 x 25 pixels.
QImage draw_icon();
