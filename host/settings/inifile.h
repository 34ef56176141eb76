#pragma once

#include <QByteArray>

#include <optional>

namespace host {

/// The text of a settings file: sections in brackets, KEY=value lines, comments after ';' or '#'.
///
/// Blanks around names and values are ignored, and so is the case of sections and keys; of equal
/// keys the first counts. Lines end with LF or CRLF. All bytes are allowed; lines of no known form
/// are ignored and kept.
class IniFile {
public:
    explicit IniFile(QByteArray bytes) : bytes_(std::move(bytes)) {}

    const QByteArray& bytes() const { return bytes_; }

    /// The value of @p key in @p section, up to a zero byte in it; none when the key is missing.
    std::optional<QByteArray> value(const QByteArray& section, const QByteArray& key) const;

    /// Replaces the value of @p key in @p section, or adds the key after the section's last line,
    /// or the section at the end. Every other byte stays as it is.
    ///
    /// @return false, and nothing changes, when value() could not find it again: for an empty key,
    ///         a line end or a zero byte anywhere, or a key that reads as another kind of line
    bool set(const QByteArray& section, const QByteArray& key, const QByteArray& value);

private:
    struct Place;

    Place find(const QByteArray& section, const QByteArray& key) const;

    QByteArray bytes_;
};

} // namespace host
