#pragma once

#include "tests/support/reportonscreen.h"

#include <QFontMetrics>
#include <QPainter>
#include <QScrollBar>
#include <QTest>

#include <algorithm>

// Fields, so that a line has several items; the third line has one run of text with blanks in it.
inline const QByteArray report =
    "#!?PAGETOP 60,8\n"
    "#!?L1,8,8;Alpha    #!?R10,8,8;    1.25  #!?R20,8,8;   17.50\n"
    "#!?L1,8,8;Beta     #!?R10,8,8;    2.25  #!?R20,8,8;   27.50\n"
    "one two three four\n"
    "#!?L1,8,8;Gamma    #!?R10,8,8;    3.25                                   #!?L53,8,8;lastcol!\n"
    "#!?PAGEEND\n"
    "#!?PAGETOP\nPage two\n#!?PAGEEND\n";

inline const QRgb black = qRgb(0, 0, 0);
inline const QRgb paper = qRgb(255, 255, 0);

class Highlighting : public ReportOnScreen {
protected:
    QSize cell_size() const {
        const QFontMetrics metrics(screen()->font(), screen());
        return {metrics.maxWidth(), metrics.height()};
    }

    /// The pixel in the middle of a cell, on the image.
    QPoint at(int column, int row) const {
        const QSize cell = cell_size();
        return {20 + column * cell.width() + cell.width() / 2,
                20 + row * cell.height() + cell.height() / 2};
    }

    QStringList texts() const {
        QStringList all;
        for (const StringItem& record : manager_.hilights())
            all << record.text;
        return all;
    }

    void drag(QPoint from, QPoint to) {
        QTest::mousePress(screen(), Qt::LeftButton, {}, from);
        QTest::mouseMove(screen(), to);
        QTest::mouseRelease(screen(), Qt::LeftButton, {}, to);
    }

    /// Which share of a rectangle of page units is of a color, in percent.
    int share(const QRect& place, QRgb color) const {
        const QImage picture = image();
        int count = 0;
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x)
                count += picture.pixel(x + 20, y + 20) == color;
        }
        return 100 * count / std::max(1, place.width() * place.height());
    }

    bool is_inverse(const QRect& place) const {
        return share(place, black) > 50 && share(place, paper) == 0;
    }

    QRect drawn(int row, int item) const { return manager_.page_row(row).at(item).drawn; }
};
