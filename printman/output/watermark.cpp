#include <printman/output/jobfont.h>
#include <printman/output/watermark.h>

#include <QFontMetricsF>
#include <QPainter>
#include <QStringDecoder>
#include <QTransform>

#include <algorithm>
#include <cstring>

namespace printman {

namespace {

constexpr int full_turn = 360;
constexpr int farthest = 1 << 20; // device units: more than any page has

bool is_utf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return !decoder.hasError() && !text.contains(QChar::ReplacementCharacter);
}

/// Without the start of a character that was cut.
QByteArray whole_characters(QByteArray bytes) {
    constexpr qsizetype max_tail = 3;
    for (qsizetype cut = 0; cut <= max_tail && cut <= bytes.size(); ++cut)
        if (is_utf8(bytes.chopped(cut)))
            return bytes.chopped(cut);
    return bytes;
}

} // namespace

QString utf8_or_latin1(const QByteArray& bytes) {
    return is_utf8(bytes) ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes);
}

QString utf8_or_latin1_field(const char* bytes, qsizetype size) {
    if (!bytes)
        return {};
    const QByteArray text(bytes);
    if (text.size() < size)
        return utf8_or_latin1(text);
    const QByteArray cut = text.left(size - 1);
    return utf8_or_latin1(is_utf8(text) ? whole_characters(cut) : cut);
}

void draw_watermark(QPainter& painter, const Watermark& mark) {
    const int x = std::clamp(mark.x, -farthest, farthest);
    const int y = std::clamp(mark.y, -farthest, farthest);
    painter.setPen(mark.colour.isValid() ? mark.colour : QColor(Qt::black));
    QFont font(mark.family);
    font.setPointSize(job_point_size(mark.point_size));
    painter.setFont(font);
    const QRect measured =
        painter.boundingRect(QRect(0, 0, 1, 1), Qt::AlignLeft | Qt::TextSingleLine, mark.text);
    QTransform turn;
    turn.translate(x, y);
    turn.rotate(-(mark.angle % full_turn));
    turn.translate(-x, -y);
    painter.setWorldTransform(turn);
    painter.drawText(QRect(QPoint(x, y), measured.size()),
                     Qt::AlignLeft | Qt::TextSingleLine | Qt::TextDontClip, mark.text);
}

} // namespace printman
