#include "tests/output/printing/printing.h"

#include <QColor>
#include <QPainter>

using testsupport::read_file;
using testsupport::text;
using testsupport::write_file;

namespace {

class PdfJobs : public Printing {
protected:
    PdfJobs() { stub_tools(); }

    void mark(int in_front) {
        manager_.set_watermark_info("DRAFT", "Liberation Sans", 40, 45, QColor(Qt::red), 300, 300,
                                    in_front);
    }

    /// Paints "/tmp/korvo.ps" as a host does.
    void paint() {
        manager_.pdf_mode = true;
        const std::unique_ptr<QPainter> painter(
            manager_.create_printer("office", setup_record("x").devmode));
        ASSERT_TRUE(painter);
        painter->drawText(100, 100, text("x"));
    }
};

} // namespace

TEST_F(PdfJobs, createRunsTwoCommandsForAReportWithAForm) {
    report(1);
    paint();
    manager_.form_file = path(text("f.pdf"));
    write_file(manager_.form_file, "form");
    EXPECT_EQ(manager_.create_pdffile(), 1) << error().toStdString();
    const QString result = manager_.result_pdf_file;
    EXPECT_TRUE(result.startsWith(work_.path() + text("/cp"))) << result.toStdString();
    EXPECT_EQ(log(), (QStringList{text("ps2pdf [/tmp/korvo.ps] [/tmp/korvo.pdf]"),
                                  text("pdftk [/tmp/korvo.pdf] [background] [%1] [output] [%2]")
                                      .arg(manager_.form_file, result)}));
    EXPECT_EQ(read_file(result), "/tmp/korvo.pdf background " + manager_.form_file.toUtf8() + '\n');
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(PdfJobs, printRunsFiveCommandsForAWatermarkBehindAForm) {
    report(1);
    paint();
    mark(0);
    manager_.form_file = path(text("f.pdf"));
    write_file(manager_.form_file, "form");
    EXPECT_EQ(manager_.print_pdf_file(), 1) << error().toStdString();
    EXPECT_EQ(log(),
              (QStringList{
                  text("ps2pdf [/tmp/korvo.ps] [/tmp/korvo.pdf]"),
                  text("ps2pdf [/tmp/watermark.ps] [/tmp/watermark.pdf]"),
                  text("pdftk [/tmp/watermark.pdf] [background] [%1] [output] [/tmp/korvoout.pdf]")
                      .arg(manager_.form_file),
                  text("pdftk [/tmp/korvo.pdf] [background] [/tmp/korvoout.pdf] [output] "
                       "[/tmp/korvoout2.pdf]"),
                  text("lpr [-P] [office] [/tmp/korvo.ps]")}));
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(PdfJobs, aWatermarkInFrontOfAFormIsLaidOverWhatAnEarlierRunLeft) {
    report(1);
    paint();
    mark(1);
    manager_.form_file = path(text("f.pdf"));
    write_file(text("/tmp/korvoout.pdf"), "earlier");
    EXPECT_EQ(manager_.create_pdffile(), 1) << error().toStdString();
    EXPECT_EQ(log().mid(2),
              (QStringList{
                  text("pdftk [/tmp/watermark.pdf] [background] [/tmp/korvoout.pdf] [output] [%1]")
                      .arg(manager_.result_pdf_file)}));
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(PdfJobs, aWatermarkInFrontOfAFormFailsWhenNothingWasLeft) {
    report(1);
    paint();
    mark(1);
    manager_.form_file = path(text("f.pdf"));
    const std::string told = said([this] { EXPECT_EQ(manager_.create_pdffile(), 0); });
    EXPECT_THAT(told, testing::MatchesRegex("printman: 'pdftk [^\n]*' failed with status 3\n"));
    EXPECT_FALSE(manager_.last_job_ok());
    EXPECT_EQ(files(), QStringList());
}

TEST_F(PdfJobs, withoutAFormTheWatermarkIsStampedOrLaidBehind) {
    report(1);
    for (const int in_front : {0, 1}) {
        paint();
        mark(in_front);
        EXPECT_EQ(manager_.create_pdffile(), 1) << error().toStdString();
        EXPECT_EQ(
            log().last(),
            text("pdftk [/tmp/korvo.pdf] [%1] [/tmp/watermark.pdf] [output] [%2]")
                .arg(in_front ? text("stamp") : text("background"), manager_.result_pdf_file));
    }
}

TEST_F(PdfJobs, withoutFormAndWatermarkTheReportIsMovedIntoPlace) {
    report(1);
    paint();
    EXPECT_EQ(manager_.create_pdffile(), 1) << error().toStdString();
    EXPECT_EQ(log(), QStringList{text("ps2pdf [/tmp/korvo.ps] [/tmp/korvo.pdf]")});
    EXPECT_EQ(read_file(manager_.result_pdf_file), "pdf of /tmp/korvo.ps\n");
}

TEST_F(PdfJobs, createWithoutPostScriptRunsNothingAndHasNoResult) {
    report(1);
    paint();
    ASSERT_EQ(manager_.create_pdffile(), 1);
    const qsizetype calls = log().size();
    EXPECT_EQ(manager_.create_pdffile(), 0);
    EXPECT_EQ(log().size(), calls);
    EXPECT_EQ(manager_.result_pdf_file, QString());
    EXPECT_EQ(error(), text("/tmp/korvo.ps: there is no such file"));
}

TEST_F(PdfJobs, toolsThatMakeNothingFailTheJobAndTheirCommandsStillRun) {
    report(1);
    stub_tools(Stubs::only_record);
    paint();
    mark(0);
    manager_.form_file = path(text("f.pdf"));
    const std::string told = said([this] { EXPECT_EQ(manager_.print_pdf_file(), 0); });
    EXPECT_EQ(log().size(), 5);
    EXPECT_EQ(log().last(), text("lpr [-P] [office] [/tmp/korvo.ps]"));
    EXPECT_EQ(error(), text("'ps2pdf /tmp/korvo.ps /tmp/korvo.pdf' produced an incomplete file"));
    EXPECT_THAT(told, testing::HasSubstr("printman: 'pdftk /tmp/korvo.pdf background"));
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(PdfJobs, aServerJobPutsThePdfInThePlaceOfThePostScript) {
    report(2);
    manager_.pdf_mode = true;
    manager_.form_file = path(text("f.pdf"));
    write_file(manager_.form_file, "form");
    write_file(path(text("job.bin")),
               QByteArray::fromStdString(setup_bytes({record("laser", "office")})));
    EXPECT_EQ(manager_.print_serverrpt_page("laser", 1, 1, 0, path(text("out.ps")),
                                            path(text("job.bin")), {}, {}),
              1)
        << error().toStdString();
    ASSERT_EQ(log().size(), 2);
    const QString pdf = log()[0].section(u'[', 2).chopped(1);
    EXPECT_TRUE(pdf.startsWith(work_.path() + text("/kv"))) << pdf.toStdString();
    EXPECT_EQ(log()[0], text("ps2pdf [%1] [%2]").arg(path(text("out.ps")), pdf));
    EXPECT_TRUE(log()[1].startsWith(text("pdftk [%1] [background] [%2] [output] [%3/kvo2")
                                        .arg(pdf, manager_.form_file, work_.path())))
        << log()[1].toStdString();
    EXPECT_EQ(read(text("out.ps")),
              pdf.toUtf8() + " background " + manager_.form_file.toUtf8() + '\n');
    EXPECT_EQ(files(), (QStringList{text("f.pdf"), text("out.ps")}));
    EXPECT_EQ(shared_scratch(), QStringList());
}
