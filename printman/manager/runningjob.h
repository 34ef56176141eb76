#pragma once

#include <printman/manager/printmanprivate.h>
#include <printman/output/reportjob.h>

#include <QPointer>

/// A print job that the manager runs. In its dialogs and in the events that it lets be handled the
/// host may end the manager, so it keeps what it works with, and how the manager was set when it
/// began.
class CPrintMan::Private::RunningJob {
public:
    explicit RunningJob(CPrintMan& manager);
    ~RunningJob();
    RunningJob(const RunningJob&) = delete;
    RunningJob& operator=(const RunningJob&) = delete;

    /// The parts of the manager, which stay.
    Private* operator->() const { return d_.get(); }

    /// The manager itself, null when it has gone.
    CPrintMan* manager() const { return manager_; }

    /// Begins an operation that walks the report's pages, unless it is part of another one, which
    /// may be canceled already.
    void start_control();

    /// The job of the whole report; there is a printer.
    printman::ReportJob report_job();

    /// Runs an operation of the PDF pipeline that the host asks for by itself: 1, or 0 when it
    /// failed.
    int
    run_pipeline(const std::function<printman::Result(printman::PdfPipeline& pipeline)>& operation);

private:
    printman::PdfPipeline pipeline() const;
    void name_document() const;

    std::shared_ptr<Private> d_;
    QPointer<CPrintMan> manager_;
    bool pdf_mode_;
    bool text_once_;
    QString form_file_;
    QString document_title_;
};
