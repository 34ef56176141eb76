#include "examples/reportpage.h"

#include <algorithm>
#include <cstdlib>

namespace examples {

std::string latin1(std::string_view utf8) {
    std::string text;
    for (size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte < 0x80) {
            text += utf8[i];
        } else if ((byte == 0xC2 || byte == 0xC3) && i + 1 < utf8.size()) {
            const auto next = static_cast<unsigned char>(utf8[++i]);
            text += static_cast<char>(((byte & 0x03U) << 6U) | (next & 0x3FU));
        } else if (byte >= 0xC0) {
            text += '?';
        }
    }
    return text;
}

std::string with_commas(long number) {
    std::string text = std::to_string(std::labs(number));
    for (auto at = static_cast<int>(text.size()) - 3; at > 0; at -= 3)
        text.insert(static_cast<size_t>(at), ",");
    return number < 0 ? text + "-" : text;
}

std::string money(long cents) {
    const long fraction = std::labs(cents) % 100;
    return with_commas(std::labs(cents) / 100) + (fraction < 10 ? ".0" : ".") +
           std::to_string(fraction) + (cents < 0 ? "-" : "");
}

void Line::pad_to(int column) {
    const int missing = column - 1 - cells_;
    if (missing > 0)
        bytes_.append(static_cast<size_t>(missing), ' ');
    cells_ = std::max(cells_, column - 1);
}

Line& Line::text(int column, std::string_view text) {
    pad_to(column);
    bytes_ += text;
    cells_ += static_cast<int>(text.size());
    return *this;
}

void Line::field(char code, int column, int size, std::string_view text, int indent) {
    pad_to(column);
    const std::string shown(text.substr(0, static_cast<size_t>(size)));
    bytes_ += std::string("#!?") + code + std::to_string(column) + ',' + std::to_string(size) +
              ',' + std::to_string(shown.size()) + ';';
    pad_to(column + indent);
    bytes_ += shown;
    cells_ += static_cast<int>(shown.size());
    pad_to(column + size);
}

Line& Line::left(int column, int size, std::string_view text) {
    field('L', column, size, text, 0);
    return *this;
}

Line& Line::right(int column, int size, std::string_view text) {
    field('R', column, size, text, std::max(0, size - static_cast<int>(text.size())));
    return *this;
}

Line& Line::centre(int column, int size, std::string_view text) {
    field('C', column, size, text, std::max(0, size - static_cast<int>(text.size())) / 2);
    return *this;
}

Line& Line::tab(int column, int target) {
    pad_to(column);
    bytes_ += "#!?T" + std::to_string(column) + ',' + std::to_string(target) + ';';
    pad_to(target);
    return *this;
}

Line& Line::rule(int column, int count, char c) {
    return text(column, std::string(static_cast<size_t>(count), c));
}

void Report::write(const std::string& line) {
    ok_ = ok_ && std::fwrite(line.data(), 1, line.size(), stdout) == line.size() &&
          std::fputc('\n', stdout) != EOF;
}

void Report::begin_page() {
    end();
    write("#!?PAGETOP " + std::to_string(columns_) + ',' + std::to_string(lines_));
    open_ = true;
    used_ = 0;
}

void Report::add(const Line& line) {
    ok_ = ok_ && open_ && line.cells() < columns_ && used_ < lines_;
    const size_t size = line.bytes().find_last_not_of(' ') + 1;
    write(line.bytes().substr(0, size));
    ++used_;
}

void Report::blank(int count) {
    for (int i = 0; i < count; ++i)
        add({});
}

void Report::end() {
    if (open_)
        write("#!?PAGEEND");
    open_ = false;
}

} // namespace examples
