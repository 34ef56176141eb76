#include <printman/output/chosenpdf.h>
#include <printman/output/jobmessages.h>
#include <printman/output/pageprint.h>
#include <printman/printer/hostservices.h>
#include <printman/render/itempainter.h>
#include <printman/toolkit/modaldialog.h>
#include <printman/toolkit/psprinter.h>

#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QPainter>
#include <QPointer>

#include <climits>
#include <cstdlib>
#include <vector>

namespace printman {

namespace {

/// The upright style of @p family that is nearest to @p weight. The dialog looks for a style by its
/// name, and takes any other, an italic one too, in the place of one that the family lacks.
QString upright_style(const QString& family, int weight) {
    QString nearest;
    int distance = INT_MAX;
    for (const QString& style : QFontDatabase::styles(family)) {
        const int away = std::abs(QFontDatabase::weight(family, style) - weight);
        if (away >= distance || QFontDatabase::italic(family, style))
            continue;
        nearest = style;
        distance = away;
    }
    return nearest;
}

/// Whether the host's setting turns the page map off.
bool is_page_map_off() {
    const char* setting = GetEnv("NOPAGEMAP", "dlwmenu.ini", "env");
    return setting && (*setting == 'y' || *setting == 'Y');
}

/// One page on its way to a device that was opened for it.
class PagePrint {
public:
    PagePrint(const PrintedPage& page, PageUnits& units)
        : rows_(page.rows.begin(), page.rows.end()), columns_(page.columns), lines_(page.lines),
          units_(units) {}

    void set_font(const QFont& font) { font_ = font; }

    Result on_printer(PsPrinter& printer);
    Result on_pdf(const PsPrinter& printer);

private:
    void paint(QPainter& p);

    // A copy: painting records where each item stands on this device, and the host may turn the
    // page while a dialog is open.
    std::vector<QValueList<StringItem>> rows_;
    int columns_;
    int lines_;
    PageUnits& units_;
    QFont font_;
};

void PagePrint::paint(QPainter& p) {
    p.setFont(font_);
    PageUnits units = units_;
    units.set(p, columns_, lines_, false, 0, 0);
    ItemPainter(p, units).draw_page(rows_);
}

Result PagePrint::on_printer(PsPrinter& printer) {
    if (printer.printerState() == QPrinter::Active || printer.printerState() == QPrinter::Aborted)
        return Result::failure(QStringLiteral("the printer has not ended another job"));
    QPainter p;
    if (!p.begin(&printer))
        return printer_failure(printer);
    units_.no_page_map = is_page_map_off();
    // The host may have aborted the job when it was asked.
    const bool aborted = printer.printerState() == QPrinter::Aborted;
    if (!aborted)
        paint(p);
    const bool done = p.end() && printer.printerState() != QPrinter::Error;
    if (aborted)
        return Result::canceled();
    return done ? Result() : printer_failure(printer);
}

Result PagePrint::on_pdf(const PsPrinter& printer) {
    return make_chosen_pdf(printer, [this](QPainter& p, QPagedPaintDevice& /*device*/) {
        units_.no_page_map = is_page_map_off();
        paint(p);
        return Result();
    });
}

} // namespace

QFont first_dialog_font(const QString& family) {
    constexpr int points = 12;
    QFont font(family, points, QFont::Light);
    if (!QFontDatabase::hasFamily(font.family()))
        font.setFamily(QFontInfo(font).family());
    font.setStyleName(upright_style(font.family(), font.weight()));
    return font;
}

QFont first_print_font() {
    return first_dialog_font(QStringLiteral("Helvetica"));
}

std::optional<QFont> choose_font(QWidget* parent, const QFont& first) {
    ModalDialog<QFontDialog> dialog(parent);
    dialog->setCurrentFont(first);
    return dialog.run() ? std::optional(dialog->selectedFont()) : std::nullopt;
}

Result print_page_as_chosen(QWidget* parent, const std::weak_ptr<PsPrinter>& printer,
                            PageUnits& units, const PrintedPage& page) {
    if (!parent || printer.expired())
        return Result::declined();
    const QPointer<QWidget> window = parent;
    // Both may go while a dialog is open; the caller's own reference may go with its owner.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const std::weak_ptr<PsPrinter> chosen = printer;
    PagePrint print(page, units);
    const bool is_set_up = chosen.lock()->setup(parent);
    if (!is_set_up || !window || chosen.expired())
        return Result::declined();
    const std::optional<QFont> font = choose_font(parent, first_print_font());
    const std::shared_ptr<PsPrinter> kept = chosen.lock();
    if (!font || !window || !kept)
        return Result::declined();
    print.set_font(*font);
    return kept->isPdfChosen() ? print.on_pdf(*kept) : print.on_printer(*kept);
}

} // namespace printman
