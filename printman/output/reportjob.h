#pragma once

#include <printman/output/jobprinter.h>
#include <printman/output/pdfpipeline.h>
#include <printman/output/reportpainter.h>

#include <QFont>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

class QPainter;

namespace printman {

/// What print jobs work with: parts of the manager.
struct JobTools {
    PsPrinter& printer;
    LoadedReport source;
    PageUnits& units; ///< its margins become those of the printer's record
    FixedNames& names;
    PdfPipeline pipeline;
    PrintmanProgress progress;
    std::function<bool()> goes_on; ///< asked while the job waits; may be empty
    bool pdf_mode;                 ///< whether a printed job goes through the PDF pipeline
    QString& output;               ///< the output file that a job gave the printer last
    bool& is_canceled; ///< set from outside while a job runs, or by its progress function; what
                       ///< else belongs to the manager may be gone then

    /// Saves the report as plain text, with a warning on the widget: empty, or why it failed.
    std::function<QString(QWidget*, const QString&)> save_text;
};

/// How a job ended. One that the user cancelled in a dialog is not done and has no error.
struct JobEnd {
    bool is_done = false;
    QString error; ///< in one line
};

/// Who prints to where.
struct PainterSetup {
    QString printer;                      ///< name of the queue
    const DLWDEVMODE* devmode = nullptr;  ///< null for a printer that gets plain text
    const QString* file = nullptr;        ///< the output file; null for that of the PDF mode
    const PageMargins* margins = nullptr; ///< of the sheet; null leaves them
};

/// The window that dialogs belong to.
class DialogParent {
public:
    explicit DialogParent(QWidget* window) : window_(window), was_given_(window) {}

    QWidget* widget() const { return window_; }
    bool is_gone() const { return was_given_ && !window_; }

private:
    QPointer<QWidget> window_;
    bool was_given_;
};

/// Prints a whole report: to a printer, or into a PDF. While a dialog is open or events are handled
/// the parent of the dialogs may go, which then ends the job.
class ReportJob {
public:
    explicit ReportJob(JobTools tools) : tools_(std::move(tools)) {}

    /// Sets the printer up and starts its job. Without a file the output is "/tmp/korvo.ps" in PDF
    /// mode, which is then this process's until the PDF is made, else the spooler.
    ///
    /// @param why receives why it failed; the result is then null
    std::unique_ptr<QPainter> start(const PainterSetup& setup, QString& why);

    /// Prints on the printer of that id in the setup file or, when that is null or empty or
    /// @p must_ask, as the user chooses; the host's events are handled between two pages.
    JobEnd print(QWidget* parent, const char* printer_id, PrintedCopies printed, bool must_ask);

    /// Prints into @p output_file with the printer of that id in @p setup_file, without a dialog.
    JobEnd serve(const char* printer_id, PrintedCopies printed, const QString& output_file,
                 const QString& setup_file);

    /// Makes the PDF @p file in a font that the user chooses.
    JobEnd save_pdf(QWidget* parent, const QString& file);

    /// Makes a PDF in the current directory, with form and watermark, as the printer of that id in
    /// @p setup_file has it, or in a font that the user chooses. A setup file other than the
    /// standard one is removed.
    ///
    /// @param result receives the PDF's name
    JobEnd make_pdf(QWidget* parent, const QString& printer_id, const QString& setup_file,
                    QString& result);

private:
    struct Pages {
        bool generic = false;
        QFont font;
        PrintedCopies printed;
        bool with_events = false;
        QPointer<QWidget> parent;
        QString text_file; ///< for plain text
    };

    JobEnd print_by_record(QWidget* parent, const PrinterRecord& record, PrintedCopies printed);
    JobEnd print_as_chosen(QWidget* parent, PrintedCopies printed);
    QString print_to_chosen(const Pages& pages);
    QString print_to_pdf(const Pages& pages);
    QString paint_to_file(const QFont& font);
    QString serve_record(const PrinterRecord& record, PrintedCopies printed,
                         const QString& output_file);
    QString paint(QPainter& painter, QPagedPaintDevice& device, const Pages& pages);
    QString paint_text(ReportPainter& report, const Pages& pages);
    QString paint_on_printer(QPainter& painter, const Pages& pages);
    QString refusal(bool generic) const;
    bool is_over(const DialogParent& parent) const;
    void set_output(const QString& file, bool is_scratch);

    JobTools tools_;
};

} // namespace printman
