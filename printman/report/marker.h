#pragma once

#include <printman/printman_export.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace printman {

/// What an in-line marker of a report line says; the four numbers are cut to 16 bits.
struct EscapeField {
    enum Type : int16_t { tab = 1, left = 2, right = 3, centre = 4 };

    int16_t type = 0;      ///< one of Type
    int16_t start = 0;     ///< 1-based column at which the field starts
    int16_t size = 0;      ///< width in cells; of a tab, the 1-based target column
    int16_t data_size = 0; ///< as written in the marker; nothing interprets it

    bool operator==(const EscapeField&) const = default;
};

/// The outcome of reading one marker.
struct MarkerParse {
    int consumed = 0;                 ///< bytes consumed after "#!?"; 0: this is no marker
    std::optional<EscapeField> field; ///< what it says; none for a tab cut off by the line's end
};

/// Bytes that introduce a marker.
inline constexpr std::string_view marker_lead = "#!?";

/// Reads the marker whose code letter stands at @p pos: "T" start "," target ";", or one of "L",
/// "R", "C" followed by start "," size "," datasize ";". Numbers are what base-10 strtol makes of
/// the bytes before their separator, which always number one or more; of a number of more than 63
/// bytes the first 63 count.
///
/// @param line the line buffer; nothing outside it is read
/// @param pos  index of the code letter
/// @param end  index of the line's last byte, the newline that was replaced by a zero byte
PRINTMAN_EXPORT MarkerParse parse_marker(std::span<const char> line, int pos, int end);

/// The same for the three numbers of a left, right or centred field.
///
/// @param pos  index of the first byte after the code letter
/// @param type the field type to store
/// @return `consumed` counts the code letter too
PRINTMAN_EXPORT MarkerParse parse_field_marker(std::span<const char> line, int pos, int end,
                                               int type);

/// Makes a line of plain text safe to stand in a report: where its bytes would be read as a marker,
/// or as the start or end of a page, a marker without effect ("#!?T0,0;", a tab at a column that
/// does not exist) is put between the "#" and the "!". All other bytes stay as they are, and the
/// cells of the page hold exactly @p text again when the line is read.
///
/// @param text the line without its newline; it must not hold zero bytes. The result stands for it
///             only when it is short enough to be read as one line: 510 bytes.
PRINTMAN_EXPORT std::string escape_report_line(std::string_view text);

} // namespace printman
