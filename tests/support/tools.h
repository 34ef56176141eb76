#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>

namespace testsupport {

/// A text that stands in a test's source, which is UTF-8.
inline QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

struct ToolResult {
    int status = -1; ///< exit status; -1 when it did not start or was killed
    QByteArray out;
    QByteArray err;
};

/// Runs a program that is found on PATH.
ToolResult run(const QString& program, const QStringList& arguments);

/// The whole of a file; empty when there is none.
QByteArray read_file(const QString& path);

void write_file(const QString& path, const QByteArray& bytes);

/// Writes an executable shell script; the first line is added.
void write_script(const QString& path, const QByteArray& body);

// What the tools make of a PostScript file or a PDF; a test fails when they fail.

/// The PDF that ps2pdf makes of a PostScript file, beside it.
QString make_pdf(const QString& ps);

/// The words of a PDF in reading order, as pdftotext finds them; of one without any, one empty
/// text.
QStringList pdf_words(const QString& pdf);

/// A page of a PDF as a picture, at @p dpi dots an inch.
QImage pdf_picture(const QString& pdf, int page, int dpi);

/// Sets an environment variable while it lives.
class EnvironmentGuard {
public:
    EnvironmentGuard(const char* name, const QByteArray& value);
    ~EnvironmentGuard();
    EnvironmentGuard(const EnvironmentGuard&) = delete;
    EnvironmentGuard& operator=(const EnvironmentGuard&) = delete;

private:
    QByteArray name_;
    QByteArray old_;
    bool was_set_;
};

} // namespace testsupport
