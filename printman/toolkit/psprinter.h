#pragma once

#include <printman/printman_export.h>
#include <printman/progress.h>
#include <printman/result.h>

#include <QPrinter>

#include <memory>

class QWidget;

/// A printer that writes PostScript: level 3, following the document structuring conventions, with
/// text kept as text in embedded fonts, so that a PDF made from it can be searched.
///
/// It starts with 600 dpi, A4 portrait, one copy, and margins of half an inch at the sides and a
/// third of an inch at top and bottom of the portrait sheet. Until margins are set, these stay at
/// the same edges of the sheet when the page is turned. Painting starts inside the margins.
///
/// With an output file the job goes there; the file appears under its name when the job is
/// complete, and an earlier file stays until then. Without one the job goes to the spooler,
/// `lp -d NAME` or, if there is no lp, `lpr -P NAME`.
///
/// printerState() is idle; active while a painter is open; aborted from abort() until that painter
/// ends; or error, until the next job, when the output cannot be opened or written or the spooler
/// dies. In the error state painting has no effect, newPage() and the painter's end() return false,
/// and errorString() says why.
///
/// A painter must end before its printer is destroyed.
///
/// QPrinter's other setters and getters work as usual; a printer name that was set is returned
/// whether or not such a printer exists. Call the setters below on this class, not through
/// QPrinter.
class PRINTMAN_EXPORT PsPrinter : public QPrinter {
public:
    /// Device pixels per inch, as long as no other resolution is set.
    static constexpr int dotsPerInch = 600;

    /// @param mode as in QPrinter; the resolution is the same in every mode
    explicit PsPrinter(PrinterMode mode = HighResolution);
    ~PsPrinter() override;

    /// Sets the spooler's queue, which need not exist.
    void setPrinterName(const QString& name);

    /// Sets the output file; an empty name sends jobs to the spooler.
    void setOutputFileName(const QString& path);

    /// The same for a fixed name in a directory that others can write to, such as /tmp. A link at
    /// that name is removed, never followed, and another user's file puts the job into the error
    /// state. The file is readable only by its owner, an earlier one is removed when the job
    /// starts, and an aborted or failed job leaves nothing.
    void setScratchFileName(const QString& path);

    /// Sets the control that is asked some twenty times a second while a job waits for its spooler.
    /// The job is dropped when it says to stop. By default there is none (null).
    void setJobControl(const std::shared_ptr<printman::JobControl>& control);

    /// Does nothing: the output is always PostScript.
    void setOutputFormat(OutputFormat format);

    /// Sets the margins in the page's current orientation, in device pixels. Margins that leave no
    /// room are ignored.
    void setMargins(unsigned top, unsigned left, unsigned bottom, unsigned right);

    /// Shows Qt's print dialog, which starts with this printer's settings, and takes over what the
    /// user chooses: printer or output file, copies, page size and orientation, margins, range,
    /// duplex, color. The dialog lists the machine's printers and an output file, so it works
    /// without any printer.
    ///
    /// @param parent parent of the dialog; may be null. It may be destroyed while the dialog is
    ///               open, which cancels the dialog, and so may the printer
    /// @return false when the dialog was canceled; nothing has changed then
    bool setup(QWidget* parent);

    /// Whether the output file was chosen in setup() as a PDF. The dialog calls every file a PDF;
    /// one whose name ends in ".ps" counts as PostScript. This printer writes only PostScript, so a
    /// caller that finds a PDF chosen paints on a QPdfWriter instead. Setting another output file
    /// resets it.
    bool isPdfChosen() const;

    /// The result of the last job.
    printman::Result lastJob() const;

    /// Why it failed, in one line; empty if it did not.
    QString errorString() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};
