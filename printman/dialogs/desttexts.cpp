#include <printman/dialogs/desttexts.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace printman {

namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("PrintDestDlg", text);
}

QString extension(const QString& filter) {
    for (const QLatin1String known : {QLatin1String("txt"), QLatin1String("pdf")}) {
        if (filter.contains(u'.' + known))
            return known;
    }
    return filter;
}

QString weight_word(int weight) {
    switch (weight) {
    case 25:
        return translated("Light ");
    case 63:
        return translated("DemiBold ");
    case 75:
        return translated("Bold ");
    case 87:
        return translated("Black ");
    default:
        return translated("Normal ");
    }
}

} // namespace

QString save_path(const QString& selected, const QString& filter) {
    const QFileInfo file(selected);
    return QStringLiteral("%1/%2.%3").arg(file.path(), file.baseName(), extension(filter));
}

QString font_in_words(const QFont& font, int weight) {
    const QString style =
        weight_word(weight) + (font.italic() ? translated("italic") : translated("regular"));
    const QString size = translated("size %1").arg(font.pointSize());
    return translated("%1, %2, %3").arg(font.family(), style, size);
}

QByteArray fitting_file_name(const QString& name, qsizetype max_bytes) {
    const QByteArray bytes = QFile::encodeName(name);
    qsizetype length = std::min(bytes.size(), max_bytes);
    // A byte of the form 10xxxxxx continues a character.
    while (length > 0 && length < bytes.size() && (bytes.at(length) & 0xC0) == 0x80)
        --length;
    return bytes.left(length);
}

} // namespace printman
