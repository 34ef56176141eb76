#include "tests/host/program.h"
#include "tests/support/scratchnames.h"
#include "tests/support/tools.h"

#include <QFile>
#include <QPointF>
#include <QRegularExpression>

#include <csignal>

using testsupport::job_lock_file;
using testsupport::NameLock;
using testsupport::text;

namespace {

/// Forms and watermarks: their jobs use fixed names in /tmp, one at a time.
class PdfExtras : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        free_scratch_names();
        write(in, small_report);
        write(text("form.rpt"),
              "#!?PAGETOP 80,3\n\n\n                         FORMWORD\n#!?PAGEEND\n");
        ASSERT_EQ(run({text("pdf"), text("form.rpt"), form}).error, "");
    }

    Ended pdf(const QStringList& options) const {
        return run(QStringList{text("pdf"), in, out} + options);
    }

    QString words(const QString& name = text("out.pdf")) const {
        return QString::fromUtf8(run_program(text("pdftotext"), {path(name), text("-")}).out)
            .simplified();
    }

    /// Where a word of the PDF begins, in points from the top left corner; nowhere: -1.
    QPointF place_of(const char* word) const {
        const QString boxes = QString::fromUtf8(
            run_program(text("pdftotext"), {text("-bbox"), path(out), text("-")}).out);
        const auto match =
            QRegularExpression(text("<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\"[^>]*>") +
                               text(word) + text("<"))
                .match(boxes);
        return match.hasMatch()
                   ? QPointF(match.captured(1).toDouble(), match.captured(2).toDouble())
                   : QPointF(-1, -1);
    }

    ~PdfExtras() override { free_scratch_names(); }

    // While no job is under way.
    static void free_scratch_names() {
        const NameLock jobs(job_lock_file);
        testsupport::free_scratch_names();
    }
    static QStringList taken_scratch_names() {
        const NameLock jobs(job_lock_file);
        return testsupport::taken_scratch_names();
    }

    /// Whether a job is past painting its pages.
    bool is_painted() const {
        const QStringList places = scratch();
        return !places.isEmpty() &&
               QFile::exists(scratch_.filePath(places.first() + text("/report.ps")));
    }

    testsupport::ScratchNamesAlone alone_;
    const QString in = text("in.rpt");
    const QString out = text("out.pdf");
    const QString form = text("form.pdf");
};

} // namespace

TEST_F(PdfExtras, aFormLiesBehindTheReport) {
    const Ended result = pdf({text("--form"), form});
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(words().contains(text("FORMWORD")));
    EXPECT_TRUE(words().contains(text("first line")));
    const QByteArray info = run_program(text("pdfinfo"), {path(out)}).out;
    EXPECT_TRUE(info.contains("Title:           in\n")) << info.constData();
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(PdfExtras, aWatermarkStandsAtItsPlace) {
    for (const QStringList& more : {QStringList{},
                                    {text("--watermark-front")},
                                    {text("--form"), form},
                                    {text("--form"), form, text("--watermark-front")},
                                    {text("--size=6")}}) {
        SCOPED_TRACE(more.join(u' ').toStdString());
        const Ended result =
            pdf(QStringList{text("--watermark=DRAFT"), text("--watermark-angle=0"),
                            text("--watermark-size=20"), text("--watermark-font=Courier New"),
                            text("--margins=1,1,0.5,1"), text("--watermark-at=2,3")} +
                more);
        EXPECT_EQ(result.error, "");
        EXPECT_NEAR(place_of("DRAFT").x(), 72 * 2.5, 2);
        EXPECT_NEAR(place_of("DRAFT").y(), 72 * 4, 6);
        EXPECT_NEAR(place_of("first").x(), 72 * 0.5, 1.5);
        EXPECT_EQ(words().contains(text("FORMWORD")), more.contains(form));
        EXPECT_EQ(scratch(), QStringList());
    }
}

TEST_F(PdfExtras, aLongWatermarkStandsWithinTheMargins) {
    const QString mark = QString(60, u'M');
    ASSERT_EQ(
        pdf({text("--watermark=") + mark, text("--watermark-angle=0"), text("--portrait")}).error,
        "");
    const QString boxes = QString::fromUtf8(
        run_program(text("pdftotext"), {text("-bbox"), path(out), text("-")}).out);
    const auto match =
        QRegularExpression(text("xMin=\"([\\d.-]+)\"[^>]*xMax=\"([\\d.-]+)\"[^>]*>M+<"))
            .match(boxes);
    ASSERT_TRUE(match.hasMatch()) << boxes.toStdString();
    EXPECT_GE(match.captured(1).toDouble(), 35);
    EXPECT_LE(match.captured(2).toDouble(), 595 - 35);
}

TEST_F(PdfExtras, aWatermarkKeepsItsLettersAndMeansNothingToAShell) {
    const QString mark = QStringLiteral("Ä-é $(touch x) 'q'");
    EXPECT_EQ(
        pdf({text("--watermark"), mark, text("--watermark-angle=0"), text("--watermark-size=12")})
            .error,
        "");
    EXPECT_TRUE(words().contains(mark)) << words().toStdString();
    EXPECT_FALSE(exists(text("x")));
}

TEST_F(PdfExtras, hostileNamesAreOnlyNames) {
    const QString odd = text("-a %d 'b' \"c\" $(touch x)");
    write(odd, small_report);
    ASSERT_TRUE(QFile::copy(path(form), path(odd + text(".form"))));
    const Ended result = run({text("pdf"), text("--form=") + odd + text(".form"),
                              text("--watermark=M"), text("--"), odd, odd + text(".pdf")});
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(words(odd + text(".pdf")).contains(text("FORMWORD")));
    EXPECT_FALSE(exists(text("x")));
}

TEST_F(PdfExtras, whatIsNoFormIsToldAndLeavesTheEarlierFile) {
    write(out, "earlier");
    write(text("text"), "no PDF\n");
    expect_failure(pdf({text("--form=text")}), "text: The form is not a PDF file");
    expect_failure(pdf({text("--form=none.pdf")}), "none.pdf: No such file or directory");
    expect_failure(pdf({text("--form=/")}), "/: Is a directory");
    write(text("broken.pdf"), "%PDF-1.4\nbroken\n");
    const Ended result = pdf({text("--form=broken.pdf")});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.error.startsWith("printman: pdftk failed with status 1: "))
        << result.error.constData();
    EXPECT_EQ(result.error.count('\n'), 1);
    EXPECT_EQ(read(out), "earlier");
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(PdfExtras, aMissingPdftkIsNamedWithItsPackage) {
    write(out, "earlier");
    stub_ps2pdf("exit 1");
    environment_.insert(text("PATH"), tools_.path());
    for (const QStringList& options :
         {QStringList{text("--form"), form}, QStringList{text("--watermark=M")}})
        expect_failure(pdf(options),
                       "pdftk is not installed; the Debian package pdftk-java has it");
    EXPECT_EQ(read(out), "earlier");
}

TEST_F(PdfExtras, interruptionWhileTheWatermarkIsMadeLeavesTheEarlierFileAndNothingElse) {
    const QString started = text("started");
    stub_ps2pdf("case \"$1\" in\n*watermark.ps) : >\"" + QFile::encodeName(path(started)) +
                "\"; exec sleep 3600 ;;\nesac\nexec /usr/bin/ps2pdf \"$@\"");
    write(out, "earlier");
    const QStringList before = files();
    const Ended result = interrupt({text("pdf"), in, out, text("--watermark=MARK")}, SIGINT,
                                   [&] { return exists(started); });
    expect_failure(result, "interrupted");
    EXPECT_EQ(read(out), "earlier");
    EXPECT_TRUE(QFile::remove(path(started)));
    EXPECT_EQ(files(), before);
    EXPECT_EQ(scratch(), QStringList());
    EXPECT_EQ(taken_scratch_names(), QStringList());
}

TEST_F(PdfExtras, interruptionWhileAnotherJobHasTheSharedScratchEndsTheWait) {
    const NameLock other(job_lock_file);
    const Ended result = interrupt({text("pdf"), in, out, text("--watermark=MARK")}, SIGINT,
                                   [this] { return is_painted(); });
    expect_failure(result, "interrupted");
    EXPECT_FALSE(exists(out));
}

TEST_F(PdfExtras, aTerminalIsToldThatAnotherJobIsWaitedFor) {
    NameLock other(job_lock_file);
    const Ended job = on_terminal({text("pdf"), in, out, text("--watermark=MARK")},
                                  "\rwaiting for another print job", [&] { other.release(); });
    EXPECT_EQ(job.status, 0);
    EXPECT_TRUE(exists(out));
}

TEST_F(PdfExtras, twoWatermarksAtOnceAreBothRight) {
    const QString both = text("for n in 1 2; do \"$0\" pdf in.rpt $n.pdf --watermark=MARK$n "
                              "--watermark-angle=0 & jobs=\"$jobs $!\"; done\n"
                              "for job in $jobs; do wait $job || exit 1; done");
    const Ended result = run_program(text("/bin/sh"), {text("-c"), both, program()});
    EXPECT_EQ(result.status, 0) << result.error.constData();
    EXPECT_TRUE(words(text("1.pdf")).contains(text("MARK1")));
    EXPECT_FALSE(words(text("1.pdf")).contains(text("MARK2")));
    EXPECT_TRUE(words(text("2.pdf")).contains(text("MARK2")));
    EXPECT_FALSE(words(text("2.pdf")).contains(text("MARK1")));
}

TEST_F(PdfExtras, aPrinterGivesFontSheetAndMargins) {
    write(text("p.ini"), "[P]\nname=generic\nsize=8\npaper=Letter\norientation=landscape\n"
                         "margins=2,1,1.5,1\n");
    ASSERT_EQ(run({text("printers"), text("--settings=conf"), text("--make=p.ini")}).error, "");
    const QStringList on_printer{text("--settings=conf"), text("--printer=P")};
    EXPECT_EQ(pdf(on_printer).error, "");
    EXPECT_TRUE(run_program(text("pdfinfo"), {path(out)}).out.contains(" 792 x 612 pts"));
    EXPECT_NEAR(place_of("first").x(), 72 * 1.5, 1.5);
    EXPECT_NEAR(place_of("first").y(), 72 * 2, 4);
    environment_.insert(text("NOPAGEMAP"), text("y"));
    EXPECT_EQ(pdf(on_printer).error, "");
    EXPECT_NEAR(place_of("first").x(), 72 * 1.5, 1.5);
    EXPECT_NEAR(place_of("line").x() - place_of("first").x(), 6 * 0.6 * 8, 0.5);
    expect_failure(pdf({text("--settings=conf"), text("--printer=Q")}),
                   "Can not find report printer 'Q'");
}

TEST_F(PdfExtras, wrongUsageIsTold) {
    for (const QStringList& options : {QStringList{text("--form=")},
                                       {text("--form=out.pdf")},
                                       {text("--printer=")},
                                       {text("--printer=P"), text("--font=Courier")},
                                       {text("--printer=P"), text("--size=9")},
                                       {text("--printer=P"), text("--paper=A4")},
                                       {text("--printer=P"), text("--landscape")},
                                       {text("--printer=P"), text("--portrait")},
                                       {text("--printer=P"), text("--margins=1,1,1,1")},
                                       {text("--watermark=")},
                                       {text("--watermark-at=1,1")},
                                       {text("--watermark=") + QString(80, u'x')},
                                       {text("--watermark=x"), text("--watermark-at=1")},
                                       {text("--font=") + QString(128, u'x')}}) {
        write(out, "%PDF-earlier");
        const Ended result = pdf(options);
        EXPECT_EQ(result.status, 2) << options.join(u' ').toStdString();
        EXPECT_TRUE(result.error.startsWith("printman: pdf: ")) << result.error.constData();
        EXPECT_EQ(result.error.count('\n'), 1);
        EXPECT_EQ(read(out), "%PDF-earlier");
    }
}
