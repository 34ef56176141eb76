#include <printman/system/shellword.h>

#include <algorithm>
#include <string_view>

namespace printman {

namespace {

bool is_plain(char c) {
    constexpr std::string_view signs = "_-+=.,:/@%";
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           signs.find(c) != std::string_view::npos;
}

} // namespace

QByteArray shell_word(const QByteArray& argument) {
    const qsizetype zero = argument.indexOf('\0');
    QByteArray word = zero < 0 ? argument : argument.left(zero);
    if (!word.isEmpty() && !word.startsWith('-') && std::ranges::all_of(word, is_plain))
        return word;
    word.replace("'", "'\\''");
    return '\'' + word + '\'';
}

QByteArray shell_file_word(const QByteArray& name) {
    return shell_word(name.startsWith('-') ? "./" + name : name);
}

} // namespace printman
