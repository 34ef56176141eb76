#pragma once

#include <QByteArray>

namespace host {

/// A line of a list of printers: "[section]", "KEY=value", or nothing, which blank lines and
/// comments that begin with ';' or '#' are.
struct SectionLine {
    enum Kind { nothing, section, entry };

    Kind kind = nothing;
    QByteArray name;  ///< of the section, or the key in small letters
    QByteArray value; ///< of an entry
    QByteArray error; ///< the error, if the line cannot be parsed

    /// Blanks around names and values are ignored.
    static SectionLine read(const QByteArray& raw);
};

} // namespace host
