#pragma once

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QString>

class QPainter;

namespace printman {

/// One line of text across a page.
struct Watermark {
    QString text;
    QString family;
    int point_size = 0;
    int angle = 0; ///< degrees, counter-clockwise
    QColor colour;
    int x = 0; ///< the text's top left corner and the centre of the rotation, in device units
    int y = 0;
    bool in_front = false; ///< over the report, not behind it
};

/// A text that a host or a record gave as bytes: UTF-8, or Latin-1 where it is no UTF-8.
QString utf8_or_latin1(const QByteArray& bytes);

/// The same for the text in a field of @p size bytes, its terminator included: what does not fit is
/// cut, between two characters. Null is no text.
QString utf8_or_latin1_field(const char* bytes, qsizetype size);

/// Draws @p mark with @p painter, whose transformation is replaced. Sizes and places beyond any
/// page are cut.
void draw_watermark(QPainter& painter, const Watermark& mark);

} // namespace printman
