#include <printman/output/jobprinter.h>
#include <printman/output/watermark.h>
#include <printman/system/sharedscratch.h>
#include <printman/toolkit/pagesizes.h>
#include <printman/toolkit/psprinter.h>

#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <unistd.h>

namespace printman {

namespace {

constexpr double max_margin = 1000.0;

/// A margin as a number that can be counted with.
double usable(double inches) {
    return std::isfinite(inches) ? std::clamp(inches, 0.0, max_margin) : 0.0;
}

unsigned to_units(double inches) {
    return static_cast<unsigned>(usable(inches) * PsPrinter::dotsPerInch);
}

} // namespace

std::optional<PrinterRecord> find_printer(const QString& setup_file, const char* id) {
    std::array<char, 128> name{};
    std::array<char, 128> font_name{};
    int setup_value = 0;
    PageInfo page{};
    PrinterRecord record;
    if (!id || get_prt_data(setup_file, id, name.data(), font_name.data(), &setup_value,
                            &record.devmode, &record.font, &page, &record.margins) != 0)
        return {};
    record.name = utf8_or_latin1_field(name.data(), name.size());
    return record;
}

void remove_setup_file(const QString& name) {
    if (!name.contains(QChar(u'\0')))
        ::unlink(QFile::encodeName(name).constData());
}

bool is_generic(const QString& printer_name) {
    return printer_name.contains(QLatin1String("generic"), Qt::CaseInsensitive);
}

void set_sheet(PsPrinter& printer, int orientation, int paper_size) {
    if (orientation == 0 || orientation == 1)
        printer.setPageOrientation(orientation == 0 ? QPageLayout::Portrait
                                                    : QPageLayout::Landscape);
    const QPageSize paper = page_size_of(paper_size);
    if (paper.isValid())
        printer.setPageSize(paper);
    if (printer.pageLayout().paintRect().isEmpty())
        printer.setMargins(0, 0, 0, 0);
}

void set_job(PsPrinter& printer, const QString& name, const DLWDEVMODE& devmode) {
    printer.setPrinterName(name);
    set_sheet(printer, devmode.orientation, devmode.paper_size);
    printer.setCopyCount(1);
    const int from = std::max(0, devmode.from_page);
    printer.setFromTo(from, std::max(from, devmode.to_page));
}

void forget_output(PsPrinter& printer, const QString& job_output) {
    const QString file = printer.outputFileName();
    if (file == job_output || file == QString::fromUtf16(tmp_watermark_ps))
        printer.setOutputFileName(QString());
}

PageMargins usable_margins(const MarginInfo& margins) {
    return {.left = usable(margins.left),
            .right = usable(margins.right),
            .top = usable(margins.top),
            .bottom = usable(margins.bottom)};
}

void set_sheet_margins(PsPrinter& printer, const PageMargins& margins) {
    printer.setMargins(to_units(margins.top), to_units(margins.left), to_units(margins.bottom),
                       to_units(margins.right));
}

PageMargins margins_within(const PageMargins& margins, QSizeF inches) {
    PageMargins kept = margins;
    if (kept.left + kept.right >= inches.width())
        kept.left = kept.right = 0.0;
    if (kept.top + kept.bottom >= inches.height())
        kept.top = kept.bottom = 0.0;
    return kept;
}

} // namespace printman
