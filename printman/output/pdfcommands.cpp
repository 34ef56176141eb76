#include <printman/output/pdfcommands.h>
#include <printman/system/shellword.h>

#include <QFile>

#include <set>

namespace printman {

namespace {

/// The number of the marker at @p at, and its length in @p length; 0 when there is none.
int marker_at(const QByteArray& text, qsizetype at, qsizetype& length) {
    int number = 0;
    qsizetype end = at + 1;
    while (text[at] == '%' && end < text.size() && end < at + 3 && text[end] >= '0' &&
           text[end] <= '9')
        number = number * 10 + (text[end++] - '0');
    length = end - at;
    return number;
}

QByteArray file_word(const QString& name) {
    return shell_file_word(QFile::encodeName(name));
}

/// A name that ps2pdf reads. Its interpreter takes names that start so for something else: one of
/// them runs what follows as a command.
QByteArray read_by_ps2pdf(const QString& name) {
    const bool special = name.startsWith(u'%') || name.startsWith(u'@') || name.startsWith(u'|');
    return file_word(special ? QStringLiteral("./") + name : name);
}

/// A name that ps2pdf writes, in which a lone % would stand for a page number.
QByteArray written_by_ps2pdf(QString name) {
    return read_by_ps2pdf(name.replace(u'%', QStringLiteral("%%")));
}

/// A name that pdftk reads. One word makes it ask its user.
QByteArray read_by_pdftk(const QString& name) {
    return file_word(name == QLatin1String("PROMPT") ? QStringLiteral("./") + name : name);
}

} // namespace

QByteArray fill_command(const QByteArray& command, const std::vector<QByteArray>& words) {
    std::set<int> numbers;
    qsizetype length = 1;
    for (qsizetype at = 0; at < command.size(); ++at)
        if (const int number = marker_at(command, at, length))
            numbers.insert(number);

    QByteArray filled;
    for (qsizetype at = 0; at < command.size(); at += length) {
        const int number = marker_at(command, at, length);
        const auto place =
            static_cast<size_t>(std::distance(numbers.begin(), numbers.find(number)));
        if (number > 0 && place < words.size())
            filled += words[place];
        else
            filled += command.mid(at, length);
    }
    return filled;
}

QByteArray ps2pdf_command(const QString& ps, const QString& pdf) {
    return fill_command("ps2pdf %1 %2", {read_by_ps2pdf(ps), written_by_ps2pdf(pdf)});
}

QByteArray background_command(const QString& front, const QString& back, const QString& result) {
    return fill_command("pdftk %1 background %2 output %3",
                        {read_by_pdftk(front), read_by_pdftk(back), file_word(result)});
}

QByteArray stamp_command(const QString& report, const QString& stamp, const QString& result) {
    return fill_command("pdftk %1 stamp %2 output %3",
                        {read_by_pdftk(report), read_by_pdftk(stamp), file_word(result)});
}

QByteArray lpr_command(const QString& printer, const QString& file) {
    return fill_command("lpr -P %1 %3", {shell_word(QFile::encodeName(printer)), file_word(file)});
}

} // namespace printman
