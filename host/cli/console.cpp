#include "host/cli/console.h"

#include "host/jobs/interrupt.h"
#include "host/jobs/stderrcapture.h"

#include <QList>
#include <QString>

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <unistd.h>

namespace host {

namespace {

int output_error = 0;

void note_output_error() {
    if (output_error == 0)
        output_error = errno != 0 ? errno : EIO;
}

/// Gives the thread a locale that knows the characters of Unicode, whatever the user's locale is,
/// while the object exists.
class ScopedUnicodeLocale {
public:
    ScopedUnicodeLocale()
        : locale_(::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)), earlier_(::uselocale(locale_)) {}
    ~ScopedUnicodeLocale() {
        ::uselocale(earlier_);
        if (locale_)
            ::freelocale(locale_);
    }
    ScopedUnicodeLocale(const ScopedUnicodeLocale&) = delete;
    ScopedUnicodeLocale& operator=(const ScopedUnicodeLocale&) = delete;

private:
    locale_t locale_;
    locale_t earlier_;
};

} // namespace

QByteArray one_line(const QByteArray& text) {
    QString shown = QString::fromUtf8(text);
    for (QChar& c : shown) {
        const bool breaks = c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
                            c == QChar::ParagraphSeparator;
        if (breaks || c == QChar::ReplacementCharacter)
            c = u'?';
    }
    return shown.toUtf8();
}

int display_width(const QByteArray& text) {
    const ScopedUnicodeLocale locale;
    int width = 0;
    for (const uint character : QString::fromUtf8(text).toUcs4()) {
        // An unknown character takes one column.
        const int columns = ::wcwidth(static_cast<wchar_t>(character));
        width += columns < 0 ? 1 : columns;
    }
    return width;
}

void report_error(const QByteArray& message) {
    const QByteArray line = "printman: " + one_line(message) + '\n';
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
}

bool print(const QByteArray& text) {
    const auto size = static_cast<size_t>(text.size());
    errno = 0;
    if (output_error == 0 && std::fwrite(text.constData(), 1, size, stdout) != size)
        note_output_error();
    return output_error == 0;
}

Outcome flush_output() {
    errno = 0;
    if (std::fflush(stdout) != 0)
        note_output_error();
    return output_error == 0 ? Outcome::success()
                             : Outcome::failure(QByteArray("cannot write to standard output: ") +
                                                std::strerror(output_error));
}

Progress::Progress(const char* unit)
    : unit_(unit), terminal_(::isatty(StderrCapture::visible_fd()) == 1) {
    clock_.start();
}

Progress::~Progress() {
    if (shown_ > 0)
        show({});
}

bool Progress::step(long long done, long long total) {
    if (is_due())
        show(QByteArray(unit_) + ' ' + QByteArray::number(done) + " of " +
             QByteArray::number(total));
    return !interrupted();
}

bool Progress::describe(const QByteArray& activity) {
    if (is_due())
        show(activity);
    return !interrupted();
}

bool Progress::is_due() {
    if (!terminal_ || clock_.elapsed() < next_)
        return false;
    next_ = clock_.elapsed() + 100;
    return true;
}

void Progress::show(const QByteArray& text) {
    const QByteArray line = '\r' + text.leftJustified(shown_, ' ') + (text.isEmpty() ? "\r" : "");
    const ssize_t written =
        ::write(StderrCapture::visible_fd(), line.constData(), static_cast<size_t>(line.size()));
    static_cast<void>(written);
    shown_ = text.size();
}

bool ConsoleWatch::pages_done(int done, int total) {
    return progress_.step(done, total);
}

bool ConsoleWatch::tool_works() {
    constexpr qint64 second = 1000;
    if (!tools_.isValid())
        tools_.start();
    return progress_.describe("making the PDF, " + QByteArray::number(tools_.elapsed() / second) +
                              " s");
}

bool ConsoleWatch::waits() {
    return progress_.describe("waiting for another print job");
}

} // namespace host
