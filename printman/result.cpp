#include <printman/result.h>

namespace printman {

QString one_line(const QString& text) {
    QString line = text;
    for (QChar& c : line) {
        if (c == u'\n' || c == u'\t' || c == u'\r')
            c = u' ';
        else if (c.category() == QChar::Other_Control)
            c = u'?';
    }
    return line;
}

Result Result::failure(const QString& error) {
    return {Kind::failed, error.isEmpty() ? QStringLiteral("unknown error") : one_line(error)};
}

Result Result::file_failure(const QString& name, const QString& reason) {
    return failure(name + QStringLiteral(": ") + reason);
}

Result Result::tool_failure(const QString& tool, const QString& end, const QString& error) {
    Result result = failure(error);
    result.tool_ = tool;
    result.tool_end_ = end;
    return result;
}

Result Result::canceled() {
    return {Kind::canceled, QStringLiteral("canceled")};
}

Result Result::declined() {
    return {Kind::canceled, {}};
}

} // namespace printman
