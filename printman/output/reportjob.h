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
    SharedScratch& names;
    PdfPipeline pipeline;
    JobControl& control; ///< a job is also canceled when the manager goes
    bool pdf_mode;       ///< whether a printed job goes through the PDF pipeline
    QString& output;     ///< the output file that a job gave the printer last

    /// Saves the report as plain text, with a warning on the widget where that fails.
    std::function<Result(QWidget*, const QString&)> save_text;
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

/// Prints a whole report: to a printer, or into a PDF. The parent of the dialogs may go while one
/// of them is open, which then ends the job.
class ReportJob {
public:
    explicit ReportJob(JobTools tools) : tools_(std::move(tools)) {}

    /// Sets the printer up and starts its job. Without a file the output is "/tmp/korvo.ps" in PDF
    /// mode, which is then this process's until the PDF is made, else the spooler.
    ///
    /// @param painter receives the painter, null on failure
    Result start(const PainterSetup& setup, std::unique_ptr<QPainter>& painter);

    /// Prints on the printer of that id in the setup file or, when that is null or empty or
    /// @p must_ask, as the user chooses; the host's events are handled between two pages.
    Result print(QWidget* parent, const char* printer_id, PrintedCopies printed, bool must_ask);

    /// Prints into @p output_file with the printer of that id in @p setup_file, without a dialog.
    /// The setup file is removed.
    Result serve(const char* printer_id, PrintedCopies printed, const QString& output_file,
                 const QString& setup_file);

    /// Makes the PDF @p file in a font that the user chooses.
    Result save_pdf(QWidget* parent, const QString& file);

    /// Makes a PDF in the current directory, with form and watermark, as the printer of that id in
    /// @p setup_file has it, or in a font that the user chooses. A setup file other than the
    /// standard one is removed.
    ///
    /// @param result receives the PDF's name
    Result make_pdf(QWidget* parent, const QString& printer_id, const QString& setup_file,
                    QString& result);

private:
    struct Pages {
        bool generic = false;
        QFont font;
        PrintedCopies printed;
        bool with_events = false;
        QPointer<QWidget> parent;
        QString text_file; ///< for plain text; empty for a new name in the current directory
    };

    Result print_by_record(QWidget* parent, const PrinterRecord& record, PrintedCopies printed);
    Result print_as_chosen(QWidget* parent, PrintedCopies printed);
    Result print_to_chosen(const Pages& pages);
    Result print_to_pdf(const Pages& pages);
    Result serve_record(const PrinterRecord& record, PrintedCopies printed,
                        const QString& output_file);
    Result paint(QPainter& painter, QPagedPaintDevice& device, const Pages& pages);
    Result paint_text(ReportPainter& report, const Pages& pages);
    Result make_text_file(const Pages& pages, FileLock& lock, QString& name);
    Result paint_on_printer(QPainter& painter, const Pages& pages);
    void begin_pdf();
    Result paint_to_file(const QFont& font);
    Result check_ready(bool generic) const;
    bool is_over(const DialogParent& parent) const;
    void start_control();
    void set_output(const QString& file, bool is_scratch);

    JobTools tools_;
};

} // namespace printman
