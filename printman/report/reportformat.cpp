#include <printman/report/reportformat.h>

#include <cstdlib>

namespace printman {

TopLine parse_top_line(std::string_view line) {
    constexpr size_t numbers_at = page_top_mark.size() + 1;
    const std::string text(line.substr(0, line.find('\0')));
    const size_t comma = text.find(',', numbers_at);
    TopLine top;
    if (comma == text.npos)
        return top;
    top.columns = std::strtol(text.substr(numbers_at, comma - numbers_at).c_str(), nullptr, 10);
    top.lines = std::strtol(text.c_str() + comma + 1, nullptr, 10);
    const bool columns_fit = top.columns >= 1 && top.columns <= max_page_columns;
    const bool lines_fit = top.lines >= 1 && top.lines <= max_page_lines;
    if (columns_fit && top.lines == 0)
        top.kind = TopLine::no_lines;
    else if (columns_fit && lines_fit && top.columns * top.lines <= max_page_cells)
        top.kind = TopLine::valid;
    else
        top.kind = TopLine::out_of_range;
    return top;
}

std::string page_top_line(const PageGeometry& geometry) {
    return std::string(page_top_mark) + ' ' + std::to_string(geometry.columns) + ',' +
           std::to_string(geometry.lines);
}

} // namespace printman
