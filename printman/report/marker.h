#pragma once

#include <printman/printman_export.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace printman {

/// A marker in a report line; its numbers are truncated to 16 bits.
struct EscapeField {
    enum Type : int16_t { tab = 1, left = 2, right = 3, centre = 4 };

    int16_t type = 0;      ///< one of Type
    int16_t start = 0;     ///< 1-based column at which the field starts
    int16_t size = 0;      ///< width in cells; of a tab, the 1-based target column
    int16_t data_size = 0; ///< as written in the marker; not interpreted

    bool operator==(const EscapeField&) const = default;
};

/// The result of parsing a marker.
struct MarkerParse {
    int consumed = 0;                 ///< bytes consumed after "#!?"; 0: this is not a marker
    std::optional<EscapeField> field; ///< none for a tab that the end of the line cuts off
};

/// Parses the marker whose code letter is at @p pos: "T" start "," target ";", or one of "L", "R",
/// "C" followed by start "," size "," datasize ";". A number is what base-10 strtol reads from the
/// bytes before its separator, of which there is always at least one; only the first 63 count.
///
/// @param line the line buffer; nothing outside it is read
/// @param pos  index of the code letter
/// @param end  index of the line's last byte, the newline that was replaced by a zero byte
PRINTMAN_EXPORT MarkerParse parse_marker(std::span<const char> line, int pos, int end);

/// Parses the three numbers of a left, right or centred field.
///
/// @param pos  index of the first byte after the code letter
/// @param type the field type to store
/// @return as parse_marker(): `consumed` includes the code letter
PRINTMAN_EXPORT MarkerParse parse_field_marker(std::span<const char> line, int pos, int end,
                                               int type);

/// Escapes a line of plain text for a report: where its bytes would be read as a marker, or as the
/// start or end of a page, no_op_marker is inserted between the "#" and the "!". All other bytes
/// stay as they are, and reading the line yields exactly @p text.
///
/// @param text the line without its newline; it must not contain zero bytes
/// @return the escaped line; one of more than max_line_bytes would be read as several lines
PRINTMAN_EXPORT std::string escape_report_line(std::string_view text);

} // namespace printman
