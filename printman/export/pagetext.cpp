#include <printman/export/pagetext.h>
#include <printman/report/marker.h>
#include <printman/system/outputfile.h>

namespace printman {

namespace {

void append_blanks(QString& line, qsizetype count) {
    if (count > 0)
        line.resize(line.size() + count, u' ');
}

} // namespace

QString columned_text(const QValueList<StringItem>& items) {
    QString line;
    for (const StringItem& item : items) {
        append_blanks(line, item.cell.left() - line.size());
        const qsizetype room = item.cell.width() - item.text.size();
        const bool is_centred = item.align == EscapeField::centre;
        const qsizetype half = room >> 1;
        if (item.align == EscapeField::right || is_centred)
            append_blanks(line, is_centred ? half : room);
        line += item.text;
        if (item.align == EscapeField::left || is_centred)
            append_blanks(line, is_centred ? half : room);
    }
    return line;
}

Result write_page_text(std::span<const QValueList<StringItem>> rows, OutputFile& out) {
    for (const QValueList<StringItem>& row : rows) {
        const QByteArray bytes = columned_text(row).toLatin1() + '\n';
        Result written = out.write(bytes.constData(), bytes.size());
        if (!written.ok()) {
            out.discard();
            return written;
        }
    }
    return out.commit();
}

} // namespace printman
