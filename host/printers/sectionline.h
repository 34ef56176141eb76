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
    QByteArray wrong; ///< what is, when it is none of these

    /// Blanks around names and values do not count.
    static SectionLine read(const QByteArray& raw);
};

} // namespace host
