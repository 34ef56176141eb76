// Makes watermarked PDFs in the current directory and looks into each: a process that others do the
// same beside.
//
// usage: pdfworker NAME COUNT    NAME is the watermark and the report's text, too

#include "tests/printer/setuprecords.h"
#include "tests/support/testhost.h"
#include "tests/support/tools.h"

#include <printman/printman.h>

#include <QApplication>
#include <QColor>
#include <QTemporaryDir>

#include <cstdio>

namespace {

/// Whether the PDF has this worker's words, each on every page, and none of another's.
bool is_own(const QString& pdf, const QString& name, int pages) {
    const QStringList words = testsupport::pdf_words(pdf);
    return words.size() == 2 * pages && words.count(u'M' + name) == pages &&
           words.count(u'R' + name) == pages;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    if (argc != 3)
        return 2;
    constexpr int pages = 2;
    const QByteArray name(argv[1]);
    const QTemporaryDir own;
    const QString file = own.filePath(QStringLiteral("r.rpt"));
    QByteArray bytes;
    for (int page = 0; page < pages; ++page)
        bytes += "#!?PAGETOP 20,3\nR" + name + "\n#!?PAGEEND\n";
    testsupport::write_file(file, bytes);
    printman::SetupRecord record = setup_record("laser");
    set_text(record.font.log_font.face_name, "Liberation Mono");
    int failures = 0;
    for (int job = 0; job < QByteArray(argv[2]).toInt(); ++job) {
        CPrintMan manager;
        manager.init_printman(file.toLocal8Bit().constData());
        manager.report_printer_id = QStringLiteral("laser");
        manager.report_setup_file = own.filePath(QStringLiteral("job.bin"));
        testsupport::write_file(manager.report_setup_file,
                                QByteArray::fromStdString(setup_bytes({record})));
        manager.set_watermark_info(("M" + name).constData(), "Liberation Sans", 30, 0,
                                   QColor(Qt::red), 500, 3000, 0);
        if (manager.print_rpt_pdffile(nullptr) == 1 &&
            is_own(manager.result_pdf_file, QString::fromLatin1(name), pages))
            continue;
        ++failures;
        std::fprintf(stderr, "%s, job %d: %s\n", argv[1], job,
                     manager.last_job_error().toLocal8Bit().constData());
    }
    return failures != 0;
}
