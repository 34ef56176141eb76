#include <printman/output/pdfcommands.h>
#include <printman/output/pdfpipeline.h>
#include <printman/output/scratchset.h>
#include <printman/output/steprunner.h>
#include <printman/system/commandrun.h>
#include <printman/system/filebackup.h>
#include <printman/system/scratchname.h>
#include <printman/toolkit/psprinter.h>

#include <QFile>
#include <QFileInfo>
#include <QPainter>

namespace printman {

namespace {

QString name_of(const char16_t* name) {
    return QString::fromUtf16(name);
}

/// Reports what is in the way before any step could do so.
Result reported(const Result& result) {
    if (!result.ok() && !result.is_canceled())
        report_failure(result.error());
    return result;
}

Result no_such_file(const QString& name) {
    return Result::file_failure(name, QStringLiteral("there is no such file"));
}

} // namespace

WatermarkPlace PdfPipeline::place() const {
    if (!mark_)
        return WatermarkPlace::none;
    return mark_->in_front ? WatermarkPlace::in_front : WatermarkPlace::behind;
}

/// Takes the right to the fixed names and claims these of them.
Result PdfPipeline::take(const QStringList& files) {
    Result taken = names_.take(control_);
    for (const QString& name : files)
        if (taken.ok())
            taken = claim_scratch_name(QFile::encodeName(name));
    return taken;
}

QStringList PdfPipeline::watermark_files() const {
    return mark_ ? QStringList{name_of(tmp_watermark_ps), name_of(tmp_watermark)} : QStringList();
}

Result PdfPipeline::claim(PdfPurpose purpose) {
    QStringList files = watermark_files();
    if (purpose == PdfPurpose::serve)
        return files.isEmpty() ? Result() : take(files);
    files << name_of(tmp_ps) << name_of(tmp_pdf);
    if (mark_ && !form_.isEmpty())
        files << name_of(tmp_over);
    if (purpose == PdfPurpose::print)
        files << name_of(tmp_result);
    return take(files);
}

Result PdfPipeline::run(PdfPurpose purpose, const PdfNames& files, const QStringList& fresh) {
    StepRunner runner(
        control_, [this] { return paint_watermark(); }, fresh);
    return runner.run(pdf_steps(purpose, place(), form_, files, printer_.printerName()));
}

/// Reports why a job ends before its steps; nothing is left of what was painted for it.
Result PdfPipeline::reported_without_ps(const Result& failure) {
    if (names_.is_held())
        remove_own(name_of(tmp_ps));
    return reported(failure);
}

Result PdfPipeline::create(QString& result) {
    result.clear();
    const SharedScratchUse in_use(names_);
    const Result claimed = claim(PdfPurpose::create);
    if (!claimed.ok())
        return reported_without_ps(claimed);
    PdfNames files{.ps = name_of(tmp_ps),
                   .pdf = name_of(tmp_pdf),
                   .over = name_of(tmp_over),
                   .result = {},
                   .watermark = name_of(tmp_watermark)};
    if (!QFile::exists(files.ps))
        return no_such_file(files.ps);
    ScratchSet made;
    const Result named = made.create({{"cp", "pdf", 0666}}, control_);
    if (!named.ok())
        return reported_without_ps(named);
    files.result = result = made.name(0);
    Result done = run(PdfPurpose::create, files, made.names());
    if (!done.ok())
        remove_own(result);
    return done;
}

Result PdfPipeline::print() {
    const SharedScratchUse in_use(names_);
    const Result claimed = claim(PdfPurpose::print);
    if (!claimed.ok())
        return reported_without_ps(claimed);
    return run(PdfPurpose::print,
               {.ps = name_of(tmp_ps),
                .pdf = name_of(tmp_pdf),
                .over = name_of(tmp_over),
                .result = name_of(tmp_result),
                .watermark = name_of(tmp_watermark)},
               {});
}

Result PdfPipeline::serve(const QString& ps) {
    if (!QFileInfo(ps).isFile())
        return reported(ps.isEmpty()
                            ? Result::failure(QStringLiteral("there was no server job yet"))
                            : no_such_file(ps));
    const SharedScratchUse in_use(names_);
    const Result claimed = claim(PdfPurpose::serve);
    if (!claimed.ok())
        return reported(claimed);
    ScratchSet made;
    const Result named =
        made.create({{"kv", "pdf", 0600}, {"kvo", "pdf", 0600}, {"kvo2", "pdf", 0600}}, control_);
    if (!named.ok())
        return reported(named);
    Result done = run(PdfPurpose::serve,
                      {.ps = ps,
                       .pdf = made.name(0),
                       .over = made.name(1),
                       .result = made.name(2),
                       .watermark = name_of(tmp_watermark)},
                      made.names());
    remove_own(made.name(2));
    return done;
}

Result PdfPipeline::convert(const QString& pdf) {
    const SharedScratchUse in_use(names_);
    Result claimed = take({name_of(tmp_ps)});
    if (claimed.ok())
        claimed = claim_scratch_name(QFile::encodeName(pdf));
    if (!claimed.ok())
        return reported(claimed);
    FileBackup earlier(pdf);
    if (!earlier.result().ok())
        return reported(earlier.result());
    Result done = StepRunner(control_).run({{.kind = PdfStep::Kind::run,
                                             .command = ps2pdf_command(name_of(tmp_ps), pdf),
                                             .from = {},
                                             .to = pdf}});
    if (done.ok())
        earlier.drop();
    return done;
}

Result PdfPipeline::make_watermark() {
    const SharedScratchUse in_use(names_);
    const Result taken = take({name_of(tmp_watermark_ps), name_of(tmp_watermark)});
    return taken.ok() ? paint_watermark() : reported(taken);
}

Result PdfPipeline::paint_watermark() {
    const QString ps = name_of(tmp_watermark_ps);
    const QPageLayout::Orientation orientation = printer_.pageLayout().orientation();
    printer_.setPrinterName(printer_.printerName());
    printer_.setScratchFileName(ps);
    printer_.setCopyCount(1);
    QPainter painter;
    bool done = painter.begin(&printer_);
    if (done) {
        draw_watermark(painter, mark_ ? *mark_ : Watermark());
        done = painter.end() && printer_.printerState() != QPrinter::Error;
    }
    printer_.setPageOrientation(orientation);
    if (!done)
        return reported(Result::failure(QStringLiteral("cannot paint the watermark: ") +
                                        printer_.errorString()));
    return StepRunner(control_).run(watermark_steps(ps, name_of(tmp_watermark)));
}

} // namespace printman
