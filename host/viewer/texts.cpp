#include "host/viewer/texts.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>

namespace host {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(host::Texts)
};

constexpr qsizetype max_shown = 60;

QString counted(int number, const QString& one, const QString& many) {
    return (number == 1 ? one : many).arg(number);
}

} // namespace

QString geometry_text(int columns, int lines, int pages) {
    return Texts::tr("%1 x %2, %3")
        .arg(QString::number(columns), QString::number(lines),
             counted(pages, Texts::tr("%1 page"), Texts::tr("%1 pages")));
}

QString page_text(int page, int pages) {
    return Texts::tr("%1 of %2").arg(page).arg(pages);
}

std::optional<int> parse_page(const QString& typed) {
    static const QRegularExpression form(
        QStringLiteral("^\\s*([0-9]+)\\s*(?:$|/\\s*[0-9]*\\s*$|\\s\\D*[0-9]*\\s*$)"));
    const auto match = form.match(typed);
    bool ok = false;
    const int page = match.captured(1).toInt(&ok);
    return ok ? std::optional(page) : std::nullopt;
}

QString selection_text(int pieces, int characters) {
    if (pieces == 0)
        return {};
    return counted(pieces, Texts::tr("%1 piece"), Texts::tr("%1 pieces")) + QStringLiteral(", ") +
           counted(characters, Texts::tr("%1 character"), Texts::tr("%1 characters"));
}

QString short_name(const QByteArray& path) {
    QString name = QFile::decodeName(path.mid(path.lastIndexOf('/') + 1));
    for (QChar& c : name) {
        if (!c.isPrint() && !c.isSurrogate())
            c = u'?';
    }
    if (name.size() > max_shown)
        name = name.left(max_shown / 2) + QChar(0x2026) + name.right(max_shown / 2 - 1);
    return name;
}

} // namespace host
