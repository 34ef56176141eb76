#include <printman/text.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

char* q2cstr(const QString& s) {
    static std::array<char, 128> buffer;
    const QByteArray text = s.toLatin1().left(buffer.size() - 1);
    buffer.fill(0);
    std::ranges::copy(text, buffer.begin());
    return buffer.data();
}

int is_whitespace(const char* text, int length) {
    if (!text || length <= 0)
        return 1;
    return std::all_of(text, text + length, [](char c) { return c == ' '; }) ? 1 : 0;
}

int get_print_string(char* dst, int dst_size, const char* src, int length) {
    if (!dst || dst_size <= 0)
        return 0;
    std::memset(dst, 0, dst_size);
    if (!src || is_whitespace(src, length))
        return 0;
    while (length > 0 && src[length - 1] == ' ')
        --length;
    while (*src == ' ') {
        ++src;
        --length;
    }
    const size_t size = strnlen(src, std::min(length, dst_size - 1));
    std::memcpy(dst, src, size);
    return static_cast<int>(size);
}

int DLWErrorWin(const char* message) {
    return std::fprintf(stderr, "%s\n", message ? message : "");
}
