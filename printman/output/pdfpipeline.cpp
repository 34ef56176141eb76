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

/// Tells what is in the way before any step could tell it.
QString told(const QString& why) {
    if (!why.isEmpty() && why != canceled())
        tell_failure(why);
    return one_line(why);
}

} // namespace

WatermarkPlace PdfPipeline::place() const {
    if (!mark_)
        return WatermarkPlace::none;
    return mark_->in_front ? WatermarkPlace::in_front : WatermarkPlace::behind;
}

/// Takes the right to the fixed names and claims these of them.
QString PdfPipeline::take(const QStringList& files) {
    QString why = names_.take(goes_on_);
    for (const QString& name : files)
        if (why.isEmpty())
            why = claim_scratch_name(QFile::encodeName(name));
    return why;
}

QStringList PdfPipeline::watermark_files() const {
    return mark_ ? QStringList{name_of(tmp_watermark_ps), name_of(tmp_watermark)} : QStringList();
}

QString PdfPipeline::claim(PdfPurpose purpose) {
    QStringList files = watermark_files();
    if (purpose == PdfPurpose::serve)
        return files.isEmpty() ? QString() : take(files);
    files << name_of(tmp_ps) << name_of(tmp_pdf);
    if (mark_ && !form_.isEmpty())
        files << name_of(tmp_over);
    if (purpose == PdfPurpose::print)
        files << name_of(tmp_result);
    return take(files);
}

QString PdfPipeline::run(PdfPurpose purpose, const PdfNames& files, const QStringList& fresh) {
    StepRunner runner([this] { return paint_watermark(); }, fresh, goes_on_);
    return runner.run(pdf_steps(purpose, place(), form_, files, printer_.printerName()));
}

/// Tells why a job ends before its steps; nothing is left of what was painted for it.
QString PdfPipeline::told_without_ps(const QString& why) {
    if (names_.is_held())
        remove_own(name_of(tmp_ps));
    return told(why);
}

QString PdfPipeline::create(QString& result) {
    result.clear();
    const FixedNamesUse in_use(names_);
    const QString refused = claim(PdfPurpose::create);
    if (!refused.isEmpty())
        return told_without_ps(refused);
    PdfNames files{.ps = name_of(tmp_ps),
                   .pdf = name_of(tmp_pdf),
                   .over = name_of(tmp_over),
                   .result = {},
                   .watermark = name_of(tmp_watermark)};
    if (!QFile::exists(files.ps))
        return files.ps + QStringLiteral(": there is no such file");
    ScratchSet made;
    const QString why = made.create({{"cp", 0666}}, goes_on_);
    if (!why.isEmpty())
        return told_without_ps(why);
    files.result = result = made.name(0);
    QString failure = run(PdfPurpose::create, files, made.names());
    if (!failure.isEmpty())
        remove_own(result);
    return failure;
}

QString PdfPipeline::print() {
    const FixedNamesUse in_use(names_);
    const QString refused = claim(PdfPurpose::print);
    if (!refused.isEmpty())
        return told_without_ps(refused);
    return run(PdfPurpose::print,
               {.ps = name_of(tmp_ps),
                .pdf = name_of(tmp_pdf),
                .over = name_of(tmp_over),
                .result = name_of(tmp_result),
                .watermark = name_of(tmp_watermark)},
               {});
}

QString PdfPipeline::serve(const QString& ps) {
    if (!QFileInfo(ps).isFile())
        return told(ps.isEmpty() ? QStringLiteral("there was no server job yet")
                                 : ps + QStringLiteral(": there is no such file"));
    const FixedNamesUse in_use(names_);
    const QString refused = claim(PdfPurpose::serve);
    if (!refused.isEmpty())
        return told(refused);
    ScratchSet made;
    const QString why = made.create({{"kv", 0600}, {"kvo", 0600}, {"kvo2", 0600}}, goes_on_);
    if (!why.isEmpty())
        return told(why);
    QString failure = run(PdfPurpose::serve,
                          {.ps = ps,
                           .pdf = made.name(0),
                           .over = made.name(1),
                           .result = made.name(2),
                           .watermark = name_of(tmp_watermark)},
                          made.names());
    remove_own(made.name(2));
    return failure;
}

QString PdfPipeline::convert(const QString& pdf) {
    const FixedNamesUse in_use(names_);
    const QString refused = take({name_of(tmp_ps)});
    if (!refused.isEmpty())
        return told(refused);
    const QString foreign = claim_scratch_name(QFile::encodeName(pdf));
    if (!foreign.isEmpty())
        return told(foreign);
    FileBackup earlier(pdf);
    if (!earlier.error().isEmpty())
        return told(earlier.error());
    QString failure = StepRunner({}, {}, goes_on_)
                          .run({{.kind = PdfStep::Kind::run,
                                 .command = ps2pdf_command(name_of(tmp_ps), pdf),
                                 .from = {},
                                 .to = pdf}});
    if (failure.isEmpty())
        earlier.drop();
    return failure;
}

QString PdfPipeline::make_watermark() {
    const FixedNamesUse in_use(names_);
    const QString refused = take({name_of(tmp_watermark_ps), name_of(tmp_watermark)});
    return refused.isEmpty() ? paint_watermark() : told(refused);
}

QString PdfPipeline::paint_watermark() {
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
        return told(QStringLiteral("cannot paint the watermark: ") + printer_.errorString());
    return StepRunner({}, {}, goes_on_).run(watermark_steps(ps, name_of(tmp_watermark)));
}

} // namespace printman
