#include <printman/output/jobprinter.h>
#include <printman/output/reportpainter.h>
#include <printman/render/itempainter.h>
#include <printman/render/textruler.h>
#include <printman/report/reportfailure.h>
#include <printman/system/regularfile.h>

#include <QFontMetrics>
#include <QPagedPaintDevice>
#include <QPainter>

#include <array>
#include <climits>
#include <cstdio>
#include <cstring>

namespace printman {

namespace {

constexpr int max_lines = 1 << 16; // on a page without end

QSizeF inches_of(const QPaintDevice& device) {
    return {static_cast<double>(device.width()) / device.logicalDpiX(),
            static_cast<double>(device.height()) / device.logicalDpiY()};
}

/// What is drawn for a line of a text file: nothing for what ends it.
QString drawn_line(const char* line) {
    QByteArray text(line);
    while (text.endsWith('\n'))
        text.chop(1);
    return shown_text(QString::fromLatin1(text));
}

} // namespace

int PrintedCopies::pages_of(int pages) const {
    return static_cast<int>(std::min<qint64>(qint64{pages} * std::max(0, copies), INT_MAX));
}

ReportPainter::ReportPainter(LoadedReport source, QPagedPaintDevice& device, QPainter& painter,
                             JobControl& control)
    : source_(source), device_(device), painter_(painter), control_(control) {}

/// Loads a page unless it is what was loaded last.
bool ReportPainter::load(int page) {
    if (page == loaded_page_ && source_.rows.loads() == loads_)
        return true;
    const PageGeometry& geometry = source_.report.geometry();
    if (!geometry.known() || !source_.report.read_page_number(page, source_.fields))
        return false;
    source_.rows.load(source_.report.cells(), geometry.columns, geometry.lines, source_.fields);
    loaded_page_ = page;
    loads_ = source_.rows.loads();
    return true;
}

Result ReportPainter::next_page() {
    if (aborted())
        return Result::canceled();
    return device_.newPage() ? Result()
                             : Result::failure(QStringLiteral("the printer takes no further page"));
}

Result ReportPainter::paint_page(int page, bool is_first) {
    if (before_page)
        before_page();
    if (aborted())
        return Result::canceled();
    if (!load(page))
        return unreadable_page(page);
    Result turned = is_first ? Result() : next_page();
    if (!turned.ok())
        return turned;
    ItemPainter(painter_, units_).draw_page(source_.rows.rows());
    return report_page();
}

/// Reports that another page is done.
Result ReportPainter::report_page() {
    if (done_ < INT_MAX)
        ++done_;
    return control_.pages_done(done_, total_) && !aborted() ? Result() : Result::canceled();
}

Result ReportPainter::paint_pages(const QFont& font, PageUnits units, PrintedCopies printed) {
    const PageGeometry geometry = source_.report.geometry();
    const int pages = source_.report.page_count();
    if (!geometry.known() || pages == 0)
        return no_pages();
    units_ = units;
    units_.margins = margins_within(units.margins, inches_of(device_));
    painter_.setFont(font);
    units_.set(painter_, geometry.columns, geometry.lines, false, 0, 0);
    done_ = 0;
    total_ = printed.pages_of(pages);

    const int rounds = printed.collate ? printed.copies : 1;
    const int times = printed.collate ? 1 : printed.copies;
    bool is_first = true;
    for (int round = 0; round < rounds; ++round) {
        for (int page = 1; page <= pages; ++page) {
            for (int time = 0; time < times; ++time) {
                Result painted = paint_page(page, is_first);
                if (!painted.ok())
                    return painted;
                is_first = false;
            }
        }
    }
    return check_still_whole(source_.report);
}

Result ReportPainter::paint_text(const char* file, int page_lines) {
    const auto in = open_regular_file(file);
    if (!in)
        return Result::failure(QStringLiteral("cannot open the text file"));
    total_ = std::max(done_, text_pages);
    const int line_height = painter_.fontMetrics().height();
    std::array<char, line_buffer_size> line{};
    int n = 0;
    while (std::fgets(line.data(), line.size(), in.get())) {
        if (std::strcmp(line.data(), "\n") != 0)
            painter_.drawText(0, n * line_height, drawn_line(line.data()));
        n = std::min(n + 1, max_lines);
        if (n != page_lines)
            continue;
        n = 0;
        if (before_page)
            before_page();
        Result turned = next_page();
        if (turned.ok() && done_ < total_)
            turned = report_page();
        if (!turned.ok())
            return turned;
    }
    return std::ferror(in.get()) ? Result::failure(QStringLiteral("cannot read the text file"))
                                 : Result();
}

} // namespace printman
