#pragma once

#include <printman/output/reportjob.h>
#include <printman/printer/printerlookup.h>
#include <printman/printer/setupfile.h>
#include <printman/printman.h>
#include <printman/render/pageunits.h>
#include <printman/render/screenview.h>
#include <printman/report/escapetable.h>
#include <printman/report/marker.h>
#include <printman/report/pagerows.h>
#include <printman/report/reportbuffer.h>
#include <printman/select/highlights.h>
#include <printman/select/screensearch.h>
#include <printman/system/outputfile.h>
#include <printman/toolkit/psprinter.h>

#include <QPoint>

#include <memory>

/// What the door owns: one of each.
class CPrintMan::Private {
public:
    // Zeroed, the record says that nothing was chosen yet.
    PrintDest dest{};

    // Destroyed from the last to the first: the report's cells, the fields, the rows, the printer.
    std::shared_ptr<PsPrinter>
        printer; ///< owned here alone; whoever prints a page can see that it is gone
    printman::PageUnits units;
    printman::PageRows rows;
    printman::EscapeTable fields;
    printman::ReportBuffer report;
    printman::ScreenView screen{units};
    printman::Highlights highlights{screen, rows, units};
    printman::ScreenSearch screen_search{screen, rows, highlights};
    printman::SearchSession search;
    QPoint press; ///< where the mouse button went down; (0, 0) when it is no drag

    printman::HostPrinters host_printers;
    printman::UnixPrinters unix_printers;
    QStringList printer_ids;
    std::unique_ptr<printman::SetupFile> listed_file; ///< what printer_ids came from last

    printman::Watermark watermark;
    bool has_watermark = false;
    QString server_ps;              ///< the PostScript file of the last server job
    QString job_output;             ///< the output file that a job gave the printer last
    printman::FixedNames tmp_names; ///< held while files of ours stand there

    PrintmanProgress progress;
    QString job_error;
    bool canceled = false; ///< by the progress function, in the last operation
    int jobs = 0;          ///< that work with the report and let the host's events be handled
    int cell_width = 0;
    int cell_height = 0;

    void make_printer();
    bool start_report(const std::string& name);
    bool printing_aborted() const;
    void write_text(printman::OutputFile& out);
    void add_marker(int row, const printman::MarkerParse& parse);
    bool show_loaded_page(bool is_another);
    QString append_pages(CPrintMan& door, QString& html);
    printman::LoadedReport loaded_report() { return {report, fields, rows}; }
    std::function<bool()> goes_on(int pages_done);
    printman::PdfPipeline pipeline(const CPrintMan& door);
    int run_pipeline(const CPrintMan& door,
                     const std::function<QString(printman::PdfPipeline&)>& operation);
    bool is_printing() const;
    void name_document(const CPrintMan& door);
    printman::ReportJob print_job(CPrintMan& door);
    QPainter* start(CPrintMan& door, const printman::PainterSetup& setup);
    bool has_printer();
    int note(const printman::JobEnd& end);
    int note(const QString& error);
};
