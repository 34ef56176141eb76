#include <printman/postscript/psprintengine.h>
#include <printman/toolkit/modaldialog.h>
#include <printman/toolkit/psprinter.h>
#include <printman/typeset/pagepaintengine.h>

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QPrintDialog>

#include <cmath>

namespace {

bool differ(const QMarginsF& a, const QMarginsF& b) {
    constexpr double points = 0.5;
    return std::abs(a.left() - b.left()) > points || std::abs(a.top() - b.top()) > points ||
           std::abs(a.right() - b.right()) > points || std::abs(a.bottom() - b.bottom()) > points;
}

QMarginsF margins_of(const QPrinter& printer) {
    return printer.pageLayout().margins(QPageLayout::Point);
}

/// Copies what any two printers have in common.
void copy_choices(const QPrinter& from, QPrinter& to) {
    to.setCopyCount(from.copyCount());
    to.setCollateCopies(from.collateCopies());
    to.setPrintRange(from.printRange());
    to.setFromTo(from.fromPage(), from.toPage());
    to.setDuplex(from.duplex());
    to.setColorMode(from.colorMode());
    to.setPageOrder(from.pageOrder());
}

/// The file name that is proposed when only a file can be chosen.
QString proposed_file(const QString& title) {
    const QString home = QDir::homePath();
    const QString current = QDir::currentPath();
    const QDir directory(current.startsWith(home) ? current : home);
    return directory.filePath((title.isEmpty() ? QStringLiteral("print") : title) +
                              QStringLiteral(".pdf"));
}

/// Copies the settings of @p printer to the dialog's printer, as far as that supports them.
void prepare_native(QPrinter& native, const PsPrinter& printer) {
    const QString title = QFileInfo(printer.docName()).fileName();
    if (!printer.printerName().isEmpty())
        native.setPrinterName(printer.printerName());
    // The dialog makes a file name of it, without what follows the last dot.
    if (!title.isEmpty())
        native.setDocName(title + QStringLiteral(".pdf"));
    if (!printer.outputFileName().isEmpty()) {
        // The dialog supports only this format for files.
        native.setOutputFormat(QPrinter::PdfFormat);
        native.setOutputFileName(printer.outputFileName());
    } else if (native.outputFormat() == QPrinter::PdfFormat) {
        native.setOutputFileName(proposed_file(title));
    }
    // A printer with a wider unprintable edge keeps its own margins.
    if (!native.setPageLayout(printer.pageLayout())) {
        native.setPageSize(printer.pageLayout().pageSize());
        native.setPageOrientation(printer.pageLayout().orientation());
    }
    copy_choices(printer, native);
}

/// Selects the printer of that name in the dialog, if it is listed.
void preselect(QPrintDialog& dialog, const QString& printer_name) {
    auto* printers = dialog.findChild<QComboBox*>(QStringLiteral("printers"));
    const int index = printers ? printers->findText(printer_name) : -1;
    if (index >= 0)
        printers->setCurrentIndex(index);
}

} // namespace

class PsPrinter::Private {
public:
    printman::PsPrintEngine print_engine;
    printman::PagePaintEngine paint_engine{print_engine};
    bool pdf_chosen = false;
    std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
};

PsPrinter::PsPrinter(PrinterMode mode) : QPrinter(mode), d(std::make_unique<Private>()) {
    setEngines(&d->print_engine, &d->paint_engine);
}

PsPrinter::~PsPrinter() = default;

void PsPrinter::setPrinterName(const QString& name) {
    if (printerState() != QPrinter::Active)
        d->print_engine.setProperty(QPrintEngine::PPK_PrinterName, name);
}

void PsPrinter::setOutputFileName(const QString& path) {
    if (printerState() == QPrinter::Active)
        return;
    d->print_engine.setProperty(QPrintEngine::PPK_OutputFileName, path);
    d->pdf_chosen = false;
}

void PsPrinter::setScratchFileName(const QString& path) {
    setOutputFileName(path);
    if (printerState() != QPrinter::Active)
        d->print_engine.set_scratch_output();
}

void PsPrinter::setJobControl(const std::shared_ptr<printman::JobControl>& control) {
    d->print_engine.set_control(control ? control : std::make_shared<printman::JobControl>());
}

void PsPrinter::setOutputFormat(OutputFormat) {}

void PsPrinter::setMargins(unsigned top, unsigned left, unsigned bottom, unsigned right) {
    d->print_engine.set_margins(QMarginsF(left, top, right, bottom));
}

bool PsPrinter::setup(QWidget* parent) {
    QPrinter native(QPrinter::HighResolution);
    prepare_native(native, *this);
    QMarginsF margins;
    {
        printman::ModalDialog<QPrintDialog> dialog(&native, parent);
        // This printer, too, may be destroyed while the dialog is open.
        const std::weak_ptr<const bool> alive = d->alive;
        // If there are printers, the dialog has now replaced the settings by the default one's.
        preselect(*dialog, printerName());
        prepare_native(native, *this);
        margins = margins_of(native);
        if (!dialog.run() || alive.expired())
            return false;
    }

    const bool to_file = native.outputFormat() == QPrinter::PdfFormat;
    setOutputFileName(to_file ? native.outputFileName() : QString());
    d->pdf_chosen =
        to_file && !outputFileName().endsWith(QLatin1String(".ps"), Qt::CaseInsensitive);
    if (!to_file)
        setPrinterName(native.printerName());
    setPageSize(native.pageLayout().pageSize());
    setPageOrientation(native.pageLayout().orientation());
    // Only margins that the user changed: the dialog's own would replace the default ones.
    if (differ(margins_of(native), margins))
        setPageMargins(margins_of(native), QPageLayout::Point);
    copy_choices(native, *this);
    return true;
}

bool PsPrinter::isPdfChosen() const {
    return d->pdf_chosen;
}

QString PsPrinter::errorString() const {
    return d->print_engine.result().error();
}

printman::Result PsPrinter::lastJob() const {
    return d->print_engine.result();
}
