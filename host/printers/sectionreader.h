#pragma once

#include "host/files/outcome.h"

namespace host {

/// Takes the content of a list of printers in its order. Each function returns an error message, or
/// an empty text.
class SectionHandler {
public:
    SectionHandler() = default;
    virtual ~SectionHandler() = default;
    SectionHandler(const SectionHandler&) = delete;
    SectionHandler& operator=(const SectionHandler&) = delete;

    /// A section of that name begins.
    virtual QByteArray start_section(const QByteArray& name) = 0;

    /// The section has the line KEY=value.
    ///
    /// @param key in small letters
    virtual QByteArray read_entry(const QByteArray& key, const QByteArray& value) = 0;

    /// The section is complete; an error is about the section as a whole.
    virtual QByteArray end_section() { return {}; }

    /// The key that counts when a section has @p key and another key for the same thing.
    virtual QByteArray common_key(const QByteArray& key) const { return key; }
};

/// Reads a list of printers: a section for each printer, by its id, with lines KEY=value. Lines
/// that begin with ';' or '#' are comments; blanks around names and values are ignored, and so are
/// the case of keys and a byte order mark. A key is allowed once in a section.
///
/// @param file the name of the text in error messages, "file:line: error"
Outcome read_sections(const QByteArray& text, const QByteArray& file, SectionHandler& handler);

/// @p text less the byte order mark that it may begin with.
QByteArray without_byte_order_mark(const QByteArray& text);

/// Whether the text consists of blank lines and comments.
bool is_without_content(const QByteArray& text);

} // namespace host
