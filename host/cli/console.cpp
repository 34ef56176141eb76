#include "host/cli/console.h"

#include "host/jobs/interrupt.h"

#include <QList>
#include <QString>

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cwchar>
#include <unistd.h>

namespace host {

namespace {

int output_error = 0;
int progress_fd = STDERR_FILENO;

void note_output_error() {
    if (output_error == 0)
        output_error = errno != 0 ? errno : EIO;
}

/// While it lives, this thread's locale knows the characters of Unicode, whatever the user's does.
class UnicodeMeanwhile {
public:
    UnicodeMeanwhile()
        : locale_(::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)), before_(::uselocale(locale_)) {}
    ~UnicodeMeanwhile() {
        ::uselocale(before_);
        if (locale_)
            ::freelocale(locale_);
    }
    UnicodeMeanwhile(const UnicodeMeanwhile&) = delete;
    UnicodeMeanwhile& operator=(const UnicodeMeanwhile&) = delete;

private:
    locale_t locale_;
    locale_t before_;
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

int shown_width(const QByteArray& text) {
    const UnicodeMeanwhile locale;
    int width = 0;
    for (const uint character : QString::fromUtf8(text).toUcs4()) {
        // What the locale does not know fills one column.
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

int flush_output() {
    errno = 0;
    if (std::fflush(stdout) != 0)
        note_output_error();
    return output_error;
}

void show_progress_on(int fd) {
    progress_fd = fd;
}

Progress::Progress(const char* unit) : unit_(unit), terminal_(::isatty(progress_fd) == 1) {
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

bool Progress::tell(const QByteArray& what) {
    if (is_due())
        show(what);
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
        ::write(progress_fd, line.constData(), static_cast<size_t>(line.size()));
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
    return progress_.tell("making the PDF, " + QByteArray::number(tools_.elapsed() / second) +
                          " s");
}

bool ConsoleWatch::waits() {
    return progress_.tell("waiting for another print job");
}

} // namespace host
