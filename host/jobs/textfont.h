#pragma once

#include <QFont>

class QPaintDevice;

namespace host {

/// Whether the library prints a report as plain text on a printer of that name.
bool prints_text(const QString& printer_name);

/// The system's fixed-width font, at its own size or at a smaller one, but not below one point, at
/// which a page of @p columns x @p lines fits on @p sheet.
QFont text_font(int columns, int lines, QPaintDevice& sheet);

/// Makes a font the application's while the object exists: the library prints plain text in it.
/// Open windows keep theirs.
class ScopedDefaultFont {
public:
    explicit ScopedDefaultFont(const QFont& font);
    ~ScopedDefaultFont();
    ScopedDefaultFont(const ScopedDefaultFont&) = delete;
    ScopedDefaultFont& operator=(const ScopedDefaultFont&) = delete;

private:
    QFont earlier_;
};

} // namespace host
