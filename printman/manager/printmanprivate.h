#pragma once

#include <printman/export/reporttext.h>
#include <printman/output/reportjob.h>
#include <printman/printer/printerlookup.h>
#include <printman/printer/setupfile.h>
#include <printman/printman.h>
#include <printman/progress.h>
#include <printman/render/pageunits.h>
#include <printman/render/screenview.h>
#include <printman/report/escapetable.h>
#include <printman/report/marker.h>
#include <printman/report/pagerows.h>
#include <printman/report/reportbuffer.h>
#include <printman/select/highlights.h>
#include <printman/select/screensearch.h>
#include <printman/system/outputfile.h>
#include <printman/system/sharedscratch.h>
#include <printman/toolkit/psprinter.h>

#include <QPoint>

#include <memory>

/// What the facade owns: one of each, and what needs several of them.
class CPrintMan::Private {
public:
    class RunningJob;

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
    int cell_width = 0;
    int cell_height = 0;

    printman::HostPrinters host_printers;
    printman::UnixPrinters unix_printers;
    QStringList printer_ids;
    std::unique_ptr<printman::SetupFile> listed_file; ///< what printer_ids came from last

    printman::Watermark watermark;
    bool has_watermark = false;
    QString server_ps;                      ///< the PostScript file of the last server job
    QString job_output;                     ///< the output file that a job gave the printer last
    printman::SharedScratch shared_scratch; ///< held while files of ours stand there

    std::shared_ptr<printman::JobControl> control = std::make_shared<printman::JobControl>();
    printman::Result last_job;
    int jobs = 0; ///< that work with the report and let the host's events be handled

    void make_printer();
    printman::Result check_printer() const;
    bool is_printing() const;
    bool printing_aborted() const;

    bool start_report(const std::string& name);
    int init_buffer(int new_cell_width, int new_cell_height);
    bool load_page(int request);
    void load_rows();
    void add_marker(int row, const printman::MarkerParse& parse);
    bool show_loaded_page(bool is_another);

    printman::Result save_report(QWidget* parent, const char* path);
    printman::Result write_report(const char* path);
    printman::Result append_pages(QString& html);

    printman::LoadedReport loaded_report() { return {report, fields, rows}; }

    QPainter* start_painter(CPrintMan& manager, const printman::PainterSetup& setup);

    /// Keeps how an operation ended.
    ///
    /// @return 1 when it is done, else 0
    int note(const printman::Result& result);
};
