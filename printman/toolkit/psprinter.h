#pragma once

#include <printman/printman_export.h>
#include <printman/progress.h>
#include <printman/result.h>

#include <QPrinter>

#include <memory>

class QWidget;

/// A printer that writes PostScript: level 3, structured by the document structuring conventions,
/// with text as text in embedded fonts, so that a PDF made of it can be searched.
///
/// It starts with 600 dpi, A4 portrait, one copy, and margins of half an inch at the sides and a
/// third of an inch at top and bottom of the portrait sheet, which stay at these edges when the
/// page is turned, until margins are set. Painting starts inside the margins.
///
/// With an output file the job goes there, and the file takes its name when the job is complete;
/// an earlier file stays until then. Without one the job goes to the spooler, `lp -d NAME` or,
/// where there is no lp, `lpr -P NAME`.
///
/// printerState(): idle; active while a painter is open; aborted from abort() until that painter
/// ends; error when the output cannot be opened or written or the spooler dies, until the next job.
/// In the error state painting has no effect, newPage() and the painter's end() answer false, and
/// errorString() says why.
///
/// A painter must end before its printer is destroyed.
///
/// QPrinter's other setters and getters work as usual; what was set is answered whether or not such
/// a printer exists. Only the setters below must be called on this class, not through QPrinter.
class PRINTMAN_EXPORT PsPrinter : public QPrinter {
public:
    /// Device pixels per inch, as long as no other resolution is set.
    static constexpr int dotsPerInch = 600;

    /// @param mode as in QPrinter; the resolution is the same in every mode
    explicit PsPrinter(PrinterMode mode = HighResolution);
    ~PsPrinter() override;

    /// Names the spooler's queue; it need not exist.
    void setPrinterName(const QString& name);

    /// Names the output file; an empty name sends jobs to the spooler.
    void setOutputFileName(const QString& path);

    /// The same for a fixed name in a directory that others can write to, such as /tmp: what
    /// someone else left there is never written through. A link is removed, and another user's file
    /// puts the job into the error state. The file is readable by its owner alone, an earlier one
    /// is gone when the job starts, and nothing is left of an aborted or failed job.
    void setScratchFileName(const QString& path);

    /// Sets what is asked some twenty times a second while a job waits for its spooler; the job is
    /// dropped when it says to stop. Null for nothing, as in the beginning.
    void setJobControl(const std::shared_ptr<printman::JobControl>& control);

    /// Does nothing: the output is PostScript.
    void setOutputFormat(OutputFormat format);

    /// Sets the margins of the page as it is turned now, in device pixels. Margins
    /// that leave no room are ignored.
    void setMargins(unsigned top, unsigned left, unsigned bottom, unsigned right);

    /// Lets the user choose, in the toolkit's print dialog, which starts with this printer's
    /// settings: printer or output file, copies, page size and orientation, margins, range, duplex,
    /// color. The dialog lists the printers that the machine has, and an output file besides, so
    /// it works without any printer.
    ///
    /// @param parent of the dialog; may be null. It may go while the dialog is open, which then is
    ///               canceled, and so may the printer
    /// @return false when it was canceled; nothing has changed then
    bool setup(QWidget* parent);

    /// Whether the output file is one that the user chose in setup() to become a PDF, which is what
    /// the dialog calls every file; only with a name that ends in ".ps" does it become PostScript.
    /// The printer itself writes PostScript alone: who is asked for a PDF paints on a QPdfWriter.
    /// Any other output file ends it.
    bool isPdfChosen() const;

    /// How the last job ended: a failure when it did not succeed.
    printman::Result lastJob() const;

    /// Why it failed, in one line; empty when it did not.
    QString errorString() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};
