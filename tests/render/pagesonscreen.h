#pragma once

#include "tests/support/reportonscreen.h"

#include <QFontMetrics>

inline const QByteArray three_pages =
    "#!?PAGETOP 60,20\nOne#!?R20,8,8;   12.50\n#!?PAGEEND\n"
    "#!?PAGETOP\n\nTwo\n#!?PAGEEND\n#!?PAGETOP\n\n\nThree\n#!?PAGEEND\n";

inline constexpr QRgb surround = qRgb(64, 64, 64);
inline constexpr QRgb paper = qRgb(255, 255, 0);

/// Pages of 60 x 20 on screen.
class PagesOnScreen : public ReportOnScreen {
protected:
    QSize text_size() const {
        const QFontMetrics metrics(screen()->font(), screen());
        return {60 * metrics.maxWidth(), 20 * metrics.height()};
    }

    /// Whether anything but paper is in the cells of a line.
    bool has_ink(int line) const {
        const QFontMetrics metrics(screen()->font(), screen());
        const QImage picture = image();
        const QRect place(20, 20 + line * metrics.height(), 60 * metrics.maxWidth(),
                          metrics.height());
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x) {
                if (picture.pixel(x, y) != paper)
                    return true;
            }
        }
        return false;
    }
};
