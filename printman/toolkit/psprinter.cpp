#include <printman/toolkit/pspaintengine.h>
#include <printman/toolkit/psprintengine.h>
#include <printman/toolkit/psprinter.h>

class PsPrinter::Private {
public:
    printman::PsPrintEngine print_engine;
    printman::PsPaintEngine paint_engine{print_engine};
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
    if (printerState() != QPrinter::Active)
        d->print_engine.setProperty(QPrintEngine::PPK_OutputFileName, path);
}

void PsPrinter::setOutputFormat(OutputFormat) {}

void PsPrinter::setMargins(unsigned top, unsigned left, unsigned bottom, unsigned right) {
    d->print_engine.set_margins(QMarginsF(left, top, right, bottom));
}

QString PsPrinter::errorString() const {
    return d->print_engine.error();
}
