#include "host/import/importer.h"

#include "host/files/inputfile.h"
#include "host/files/pendingfile.h"

#include <printman/report/marker.h>

#include <QFile>

#include <algorithm>

namespace host {

namespace {

constexpr int default_page_lines = 66;

/// An error message when the format cannot hold a line; else empty.
std::string check_line(const std::string& escaped) {
    if (escaped.size() <= printman::max_line_bytes)
        return {};
    return "the line takes " + std::to_string(escaped.size()) +
           " bytes in a report; the limit is " + std::to_string(printman::max_line_bytes);
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
        return check_line(printman::escape_report_line(text));
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
        : file_(file),
          top_(QByteArray::fromStdString(printman::page_top_line({size.columns, size.lines})) +
               '\n') {}

    void begin_page() override { write(top_); }

    std::string line(std::string_view text) override {
        const std::string escaped = printman::escape_report_line(text);
        write(QByteArray::fromRawData(escaped.data(), static_cast<qsizetype>(escaped.size())) +
              '\n');
        return check_line(escaped);
    }

    void end_page() override {
        write(QByteArray::fromStdString(std::string(printman::page_end_mark)) + '\n');
    }

    bool ok() const { return ok_; }

private:
    void write(const QByteArray& bytes) { ok_ = ok_ && file_.write(bytes); }

    PendingFile& file_;
    QByteArray top_;
    bool ok_ = true;
};

/// Reads a listing from its beginning, once for every pass.
class ListingFile {
public:
    ListingFile(QByteArray path, ImportProgress progress)
        : path_(std::move(path)), progress_(std::move(progress)) {}

    Outcome open() { return open_input(path_, file_); }

    /// Feeds the whole listing to @p reader, or what comes before @p failed answers true, which is
    /// no failure of this function.
    template <typename Failed>
    Outcome read(ListingReader& reader, const Failed& failed) {
        const qint64 size = file_.size();
        QByteArray piece(1 << 16, Qt::Uninitialized);
        bool accepted = file_.seek(0);
        if (!accepted)
            return unreadable();
        while (accepted && !failed()) {
            const qint64 got = file_.read(piece.data(), piece.size());
            if (got < 0)
                return unreadable();
            if (got == 0)
                break;
            accepted = reader.feed({piece.constData(), static_cast<size_t>(got)});
            if (progress_ && !progress_(file_.pos(), size))
                return Outcome::failure("interrupted");
        }
        if (failed() || (accepted && reader.finish()))
            return Outcome::success();
        return Outcome::failure(path_ + ':' +
                                QByteArray::number(static_cast<qlonglong>(reader.error_line())) +
                                ": " + QByteArray::fromStdString(reader.error()));
    }

private:
    Outcome unreadable() const {
        return Outcome::failure(path_ + ": " + QFile::encodeName(file_.errorString()));
    }

    QByteArray path_;
    ImportProgress progress_;
    QFile file_;
};

Outcome measure(ListingFile& file, const QByteArray& path, const ListingRules& rules,
                ReportSize& size) {
    Measure sink;
    ListingReader reader(rules, sink);
    Outcome read = file.read(reader, [] { return false; });
    if (!read.ok())
        return read;
    if (sink.pages() == 0)
        return Outcome::failure(path + ": The listing has no page");
    size.pages = sink.pages();
    size.columns = rules.columns > 0 ? rules.columns : sink.longest_line() + 1;
    if (rules.page_lines > 0)
        size.lines = rules.page_lines;
    else if (!reader.has_page_breaks())
        size.lines = default_page_lines;
    else if (sink.longest_page() <= printman::max_page_lines)
        size.lines = std::max(1, static_cast<int>(sink.longest_page()));
    else
        return Outcome::failure(path + ": A page has " + QByteArray::number(sink.longest_page()) +
                                " lines, more than " +
                                QByteArray::number(printman::max_page_lines) +
                                "; use --lines to break it");
    if (static_cast<long long>(size.columns) * size.lines > printman::max_page_cells)
        return Outcome::failure(path + ": A page of " + QByteArray::number(size.columns) +
                                " columns and " + QByteArray::number(size.lines) +
                                " lines is too large");
    return Outcome::success();
}

} // namespace

Outcome import_listing(const QByteArray& listing, const QByteArray& out, const ListingRules& rules,
                       const ImportProgress& progress) {
    ListingFile file(listing, progress);
    Outcome opened = file.open();
    if (!opened.ok())
        return opened;
    ReportSize size;
    Outcome measured = measure(file, listing, rules, size);
    if (!measured.ok())
        return measured;

    PendingFile pending;
    opened = pending.open(out);
    if (!opened.ok())
        return opened;
    Writer writer(pending, size);
    ListingReader reader({.page_lines = size.lines, .columns = size.columns, .asa = rules.asa},
                         writer);
    Outcome read = file.read(reader, [&writer] { return !writer.ok(); });
    return read.ok() ? pending.commit() : read;
}

} // namespace host
