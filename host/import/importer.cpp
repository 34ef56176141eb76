#include "host/import/importer.h"

#include "host/cli/console.h"
#include "host/files/pendingfile.h"
#include "host/jobs/interrupt.h"
#include "host/jobs/report.h"

#include <printman/report/marker.h>

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace host {

namespace {

constexpr int default_page_lines = 66;
constexpr int max_page_lines = 32767;
constexpr long long max_cells = 64LL * 1024 * 1024;

// A report's line is read into 512 bytes, which hold its newline and a zero byte too.
constexpr size_t max_line_bytes = 510;

std::string held_by_format(const std::string& escaped) {
    if (escaped.size() <= max_line_bytes)
        return {};
    return "the line is too long for a report: " + std::to_string(escaped.size()) +
           " bytes, where it holds " + std::to_string(max_line_bytes);
}

/// The first pass: how large the pages are.
class Measure : public ListingSink {
public:
    void begin_page() override {
        ++pages_;
        lines_ = 0;
    }

    std::string line(std::string_view text) override {
        ++lines_;
        longest_line_ = std::max(longest_line_, text.size());
        longest_page_ = std::max(longest_page_, lines_);
        return held_by_format(printman::escape_report_line(text));
    }

    void end_page() override {}

    long long pages() const { return pages_; }
    int longest_line() const { return static_cast<int>(longest_line_); }
    long long longest_page() const { return longest_page_; }

private:
    long long pages_ = 0;
    long long lines_ = 0;
    long long longest_page_ = 0;
    size_t longest_line_ = 0;
};

/// The second pass: the report.
class Writer : public ListingSink {
public:
    Writer(PendingFile& file, const ReportSize& size)
        : file_(file), top_("#!?PAGETOP " + QByteArray::number(size.columns) + ',' +
                            QByteArray::number(size.lines) + '\n') {}

    void begin_page() override { write(top_); }

    std::string line(std::string_view text) override {
        const std::string escaped = printman::escape_report_line(text);
        write(QByteArray::fromRawData(escaped.data(), static_cast<qsizetype>(escaped.size())) +
              '\n');
        return held_by_format(escaped);
    }

    void end_page() override { write("#!?PAGEEND\n"); }

    bool ok() const { return ok_; }

private:
    void write(const QByteArray& bytes) { ok_ = ok_ && file_.write(bytes); }

    PendingFile& file_;
    QByteArray top_;
    bool ok_ = true;
};

/// A listing that is read from its beginning once more for every pass.
class ListingFile {
public:
    explicit ListingFile(const QByteArray& path) : path_(path) {
        const int fd = ::open(path.constData(), O_RDONLY | O_NOCTTY | O_CLOEXEC);
        if (fd < 0 || !file_.open(fd, QIODevice::ReadOnly | QIODevice::Unbuffered,
                                  QFileDevice::AutoCloseHandle))
            error_ = errno != 0 ? errno : EIO;
    }

    template <typename Failed>
    Outcome read(ListingReader& reader, const Failed& failed) {
        if (error_ != 0 || !file_.seek(0))
            return Outcome::failure(path_ + ": " + std::strerror(error_ != 0 ? error_ : EIO));
        Progress progress("MiB");
        QByteArray piece(1 << 16, Qt::Uninitialized);
        const qint64 size = file_.size();
        qint64 done = 0;
        bool accepted = true;
        while (accepted) {
            const qint64 got = file_.read(piece.data(), piece.size());
            if (got < 0)
                return Outcome::failure(path_ + ": " + QFile::encodeName(file_.errorString()));
            if (got == 0)
                break;
            accepted = reader.feed({piece.constData(), static_cast<size_t>(got)}) && !failed();
            done += got;
            if (!progress.step(done >> 20, size >> 20))
                return Outcome::failure("interrupted");
        }
        if (failed())
            return Outcome::success();
        if (!accepted || !reader.finish())
            return Outcome::failure(
                path_ + ':' + QByteArray::number(static_cast<qlonglong>(reader.error_line())) +
                ": " + QByteArray::fromStdString(reader.error()));
        return Outcome::success();
    }

private:
    QByteArray path_;
    QFile file_;
    int error_ = 0;
};

Outcome measure(ListingFile& file, const QByteArray& path, const ListingRules& rules,
                ReportSize& size) {
    Measure sink;
    ListingReader reader(rules, sink);
    Outcome read = file.read(reader, [] { return false; });
    if (!read.ok())
        return read;
    if (sink.pages() == 0)
        return Outcome::failure(path + ": The listing holds no page");
    size.pages = sink.pages();
    size.columns = rules.columns > 0 ? rules.columns : sink.longest_line() + 1;
    if (rules.page_lines > 0)
        size.lines = rules.page_lines;
    else if (!reader.has_page_breaks())
        size.lines = default_page_lines;
    else if (sink.longest_page() <= max_page_lines)
        size.lines = std::max(1, static_cast<int>(sink.longest_page()));
    else
        return Outcome::failure(path + ": A page has " + QByteArray::number(sink.longest_page()) +
                                " lines, more than 32767; --lines breaks it");
    if (static_cast<long long>(size.columns) * size.lines > max_cells)
        return Outcome::failure(path + ": A page of " + QByteArray::number(size.columns) +
                                " columns and " + QByteArray::number(size.lines) +
                                " lines is too large");
    return Outcome::success();
}

} // namespace

Outcome import_listing(const QByteArray& listing, const QByteArray& out,
                       const ListingRules& rules) {
    Outcome readable = check_input(listing);
    if (!readable.ok())
        return readable;
    ListingFile file(listing);
    ReportSize size;
    Outcome measured = measure(file, listing, rules, size);
    if (!measured.ok())
        return measured;

    PendingFile pending;
    if (!pending.open(out))
        return Outcome::failure(pending.error());
    Writer writer(pending, size);
    ListingReader reader({.page_lines = size.lines, .columns = size.columns, .asa = rules.asa},
                         writer);
    Outcome read = file.read(reader, [&writer] { return !writer.ok(); });
    if (!read.ok())
        return read;
    if (interrupted())
        return Outcome::failure("interrupted");
    return writer.ok() && pending.commit() ? Outcome::success() : Outcome::failure(pending.error());
}

} // namespace host
