#include <printman/report/marker.h>
#include <printman/report/reportformat.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace printman {

namespace {

/// The bytes of one number in a line.
struct Number {
    int16_t value = 0;
    int bytes = 0;       ///< bytes taken
    bool closed = false; ///< the separator was found before the end of the line
};

int16_t to_number(const char* text, int length) {
    std::array<char, 64> scratch{};
    std::memcpy(scratch.data(), text, std::min<size_t>(length, scratch.size() - 1));
    return static_cast<int16_t>(static_cast<int>(std::strtol(scratch.data(), nullptr, 10)));
}

/// Takes the byte at @p pos and those after it up to @p separator; @p end is inside @p line.
Number take_number(std::span<const char> line, int pos, int end, char separator) {
    Number number;
    if (pos > end)
        return number;
    const char* first = line.data() + pos;
    const void* found = std::memchr(first + 1, separator, end - pos);
    number.closed = found != nullptr;
    number.bytes =
        number.closed ? static_cast<int>(static_cast<const char*>(found) - first) : end - pos + 1;
    number.value = to_number(first, number.bytes);
    return number;
}

int last_index(std::span<const char> line, int end) {
    return static_cast<int>(std::min<int64_t>(end, static_cast<int64_t>(line.size()) - 1));
}

MarkerParse parse_tab(std::span<const char> line, int pos, int end) {
    const Number start = take_number(line, pos + 1, end, ',');
    if (!start.closed)
        return {};
    const int target_pos = pos + 1 + start.bytes + 1;
    if (target_pos > end)
        return {start.bytes + 3, {}};
    const Number target = take_number(line, target_pos, end, ';');
    MarkerParse parsed{start.bytes + target.bytes + 3, {}};
    if (target.closed)
        parsed.field = EscapeField{EscapeField::tab, start.value, target.value, 0};
    return parsed;
}

bool is_recognised(std::span<const char> line) {
    const std::string_view text(line.data(), line.size());
    if (text.starts_with(page_top_mark) || text.starts_with(page_end_mark))
        return true;
    return parse_marker(line, static_cast<int>(marker_lead.size()),
                        static_cast<int>(line.size()) - 1)
               .consumed > 0;
}

} // namespace

MarkerParse parse_marker(std::span<const char> line, int pos, int end) {
    end = last_index(line, end);
    if (pos < 0 || pos > end)
        return {};
    switch (line[pos]) {
    case 'T':
        return parse_tab(line, pos, end);
    case 'L':
        return parse_field_marker(line, pos + 1, end, EscapeField::left);
    case 'R':
        return parse_field_marker(line, pos + 1, end, EscapeField::right);
    case 'C':
        return parse_field_marker(line, pos + 1, end, EscapeField::centre);
    default:
        return {};
    }
}

MarkerParse parse_field_marker(std::span<const char> line, int pos, int end, int type) {
    end = last_index(line, end);
    if (pos < 0 || pos > end)
        return {};
    std::array<int16_t, 3> values{};
    int next = pos;
    for (size_t i = 0; i < values.size(); ++i) {
        const Number number = take_number(line, next, end, i < 2 ? ',' : ';');
        if (!number.closed)
            return {};
        values[i] = number.value;
        next += number.bytes + 1;
    }
    return {next - pos + 1,
            EscapeField{static_cast<int16_t>(type), values[0], values[1], values[2]}};
}

// From right to left: whether a marker is recognised depends only on the bytes after it, and those
// are final by then. The buffer is filled from its end.
std::string escape_report_line(std::string_view text) {
    size_t leads = 0;
    for (size_t at = text.find(marker_lead); at != text.npos; at = text.find(marker_lead, at + 1))
        ++leads;
    if (leads == 0)
        return std::string(text);

    std::string escaped(text.size() + leads * no_op_marker.size() + 1, '\0');
    size_t front = escaped.size() - 1; // the last byte stands for the newline
    for (size_t i = text.size(); i-- > 0;) {
        escaped[--front] = text[i];
        if (!text.substr(i).starts_with(marker_lead) ||
            !is_recognised(std::span<const char>(escaped).subspan(front)))
            continue;
        front -= no_op_marker.size();
        escaped[front] = text[i];
        std::ranges::copy(no_op_marker, escaped.begin() + static_cast<std::ptrdiff_t>(front) + 1);
    }
    return escaped.substr(front, escaped.size() - 1 - front);
}

} // namespace printman
