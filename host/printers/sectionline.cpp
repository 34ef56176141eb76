#include "host/printers/sectionline.h"

namespace host {

SectionLine SectionLine::read(const QByteArray& raw) {
    SectionLine line;
    const QByteArray text = raw.trimmed();
    const qsizetype equals = text.indexOf('=');
    if (text.contains('\0')) {
        line.error = "the line contains a zero byte";
    } else if (text.isEmpty() || text.startsWith(';') || text.startsWith('#')) {
        line.kind = nothing;
    } else if (text.startsWith('[')) {
        line.kind = section;
        line.name = text.mid(1, text.size() - 2).trimmed();
        if (!text.endsWith(']'))
            line.error = "a section must end with ']'";
    } else if (equals > 0) {
        line.kind = entry;
        line.name = text.left(equals).trimmed().toLower();
        line.value = text.mid(equals + 1).trimmed();
    } else {
        line.error = "neither a section nor a line KEY=value";
    }
    return line;
}

} // namespace host
