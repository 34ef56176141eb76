#pragma once

#include <QFont>

class QPaintDevice;

namespace host {

/// Whether the library prints the plain text of a report on a printer of that name.
bool prints_text(const QString& printer_name);

/// The system's font of fixed width, at its own size or at one so small that a page of @p columns x
/// @p lines fits on @p sheet, but at least one point.
QFont text_font(int columns, int lines, QPaintDevice& sheet);

/// While it lives that is the font of every painter that was given none: the library prints plain
/// text in it. Windows keep theirs.
class FontMeanwhile {
public:
    explicit FontMeanwhile(const QFont& font);
    ~FontMeanwhile();
    FontMeanwhile(const FontMeanwhile&) = delete;
    FontMeanwhile& operator=(const FontMeanwhile&) = delete;

private:
    QFont before_;
};

} // namespace host
