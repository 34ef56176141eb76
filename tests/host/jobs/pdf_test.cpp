#include "tests/host/program.h"
#include "tests/support/waiting.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QPointF>
#include <QRegularExpression>

#include <csignal>

namespace {

const QString example(const char* name) {
    return QStringLiteral(PRINTMAN_SOURCE_DIR "/examples/") + QString::fromLatin1(name);
}

class Pdf : public ProgramTest {
protected:
    Ended pdf(const QString& report, const QStringList& options = {}) const {
        return run(QStringList{QStringLiteral("pdf"), report, QStringLiteral("out.pdf")} + options);
    }

    /// What a tool of poppler says of the PDF.
    QByteArray poppler(const char* tool, const QStringList& options = {}) const {
        return run_program(QString::fromLatin1(tool), options + QStringList{path(out)}).out;
    }

    QByteArray page_size() const {
        const QRegularExpression size(QStringLiteral("Page size: +(\\d+)[.\\d]* x (\\d+)"));
        const auto match = size.match(QString::fromLatin1(poppler("pdfinfo")));
        return match.captured(1).toLatin1() + 'x' + match.captured(2).toLatin1();
    }

    const QString out = QStringLiteral("out.pdf");
    const QString in = QStringLiteral("in.rpt");
};

QStringList words(const QString& text) {
    return text.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
}

/// A page of @p columns x @p lines with a word in its corner.
QByteArray grid(int columns, int lines) {
    return "#!?PAGETOP " + QByteArray::number(columns) + ',' + QByteArray::number(lines) +
           "\nword\n#!?PAGEEND\n";
}

} // namespace

TEST_F(Pdf, holdsEveryWordInReadingOrder) {
    for (const char* name : {"aging.rpt", "stocklist.rpt", "statement.rpt"}) {
        SCOPED_TRACE(name);
        const Ended result = pdf(example(name));
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
        ASSERT_EQ(run({QStringLiteral("text"), example(name), QStringLiteral("o.txt")}).status, 0);
        const QString text = QString::fromLatin1(read(QStringLiteral("o.txt")));
        const QString extracted =
            QString::fromUtf8(run_program(QStringLiteral("pdftotext"),
                                          {QStringLiteral("-layout"), QStringLiteral("-enc"),
                                           QStringLiteral("UTF-8"), out, QStringLiteral("-")})
                                  .out);
        EXPECT_EQ(words(extracted), words(text));
    }
    EXPECT_TRUE(words(QString::fromLatin1(read(QStringLiteral("o.txt"))))
                    .contains(QStringLiteral("Grünwald-Lefèvre")));
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(Pdf, fontsAreEmbeddedAndSubset) {
    ASSERT_EQ(pdf(example("statement.rpt")).status, 0);
    const QList<QByteArray> lines = poppler("pdffonts").trimmed().split('\n');
    ASSERT_GE(lines.size(), 3);
    for (qsizetype i = 2; i < lines.size(); ++i)
        EXPECT_TRUE(lines[i].contains(" yes yes yes ")) << lines[i].constData();
}

TEST_F(Pdf, titleAndCreator) {
    ASSERT_EQ(pdf(example("aging.rpt")).status, 0);
    QByteArray info = poppler("pdfinfo");
    EXPECT_TRUE(info.contains("Title:           aging\n"));
    EXPECT_TRUE(info.contains("Creator:         printman " PRINTMAN_VERSION "\n"));
    EXPECT_TRUE(info.contains("Pages:           5\n"));
    ASSERT_EQ(pdf(example("aging.rpt"), {QStringLiteral("--title"), QStringLiteral("(Ää) \\ 50%")})
                  .status,
              0);
    info = poppler("pdfinfo");
    EXPECT_TRUE(info.contains("Title:           (\xc3\x84\xc3\xa4) \\ 50%\n")) << info.constData();
}

TEST_F(Pdf, orientationFollowsTheGridUnlessAsked) {
    write(in, grid(132, 66));
    ASSERT_EQ(pdf(in).status, 0);
    EXPECT_EQ(page_size(), "842x595");
    ASSERT_EQ(pdf(in, {QStringLiteral("--portrait")}).status, 0);
    EXPECT_EQ(page_size(), "595x842");
    write(in, grid(80, 66));
    ASSERT_EQ(pdf(in).status, 0);
    EXPECT_EQ(page_size(), "595x842");
    ASSERT_EQ(pdf(in, {QStringLiteral("--landscape")}).status, 0);
    EXPECT_EQ(page_size(), "842x595");
}

TEST_F(Pdf, paperIsTheOneAskedForOrTheCountrys) {
    write(in, grid(80, 66));
    ASSERT_EQ(pdf(in, {QStringLiteral("--paper"), QStringLiteral("letter")}).status, 0);
    EXPECT_EQ(page_size(), "612x792");
    ASSERT_EQ(pdf(in, {QStringLiteral("--paper=B5")}).status, 0);
    EXPECT_EQ(page_size(), "516x729");
    environment_.insert(QStringLiteral("LC_ALL"), QStringLiteral("en_US.UTF-8"));
    ASSERT_EQ(pdf(in).status, 0);
    EXPECT_EQ(page_size(), "612x792");
}

TEST_F(Pdf, textIsAsLargeAsAskedWhereItFits) {
    const auto word_height = [this] {
        const QString text =
            QString::fromUtf8(run_program(QStringLiteral("pdftotext"),
                                          {QStringLiteral("-bbox"), out, QStringLiteral("-")})
                                  .out);
        const QRegularExpression box(
            QStringLiteral("<word xMin=\"([\\d.]+)\".* xMax=\"([\\d.]+)\".*>word<"));
        const auto match = box.match(text);
        return match.captured(2).toDouble() - match.captured(1).toDouble();
    };
    write(in, grid(40, 20));
    ASSERT_EQ(pdf(in, {QStringLiteral("--size"), QStringLiteral("10")}).status, 0);
    EXPECT_NEAR(word_height(), 4 * 0.6 * 10, 0.3);
    ASSERT_EQ(pdf(in, {QStringLiteral("--size"), QStringLiteral("7.5")}).status, 0);
    EXPECT_NEAR(word_height(), 4 * 0.6 * 7.5, 0.3);
    ASSERT_EQ(pdf(in, {QStringLiteral("--size"), QStringLiteral("1000")}).status, 0);
    const double fitted = word_height();
    EXPECT_LT(fitted, 4 * 0.6 * 40);
    ASSERT_EQ(pdf(in).status, 0);
    EXPECT_NEAR(word_height(), fitted, 0.5);
}

TEST_F(Pdf, marginsAreThoseAskedFor) {
    const auto corner = [this] {
        const QString text =
            QString::fromUtf8(run_program(QStringLiteral("pdftotext"),
                                          {QStringLiteral("-bbox"), out, QStringLiteral("-")})
                                  .out);
        const QRegularExpression box(QStringLiteral("<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\""));
        const auto match = box.match(text);
        return QPointF(match.captured(1).toDouble(), match.captured(2).toDouble());
    };
    write(in, grid(40, 20));
    ASSERT_EQ(pdf(in, {QStringLiteral("--size=10"), QStringLiteral("--margins"),
                       QStringLiteral("2,1,1.25,1.5")})
                  .status,
              0);
    EXPECT_NEAR(corner().x(), 1.25 * 72, 1.5);
    EXPECT_NEAR(corner().y(), 2 * 72, 4);
    ASSERT_EQ(pdf(in, {QStringLiteral("--size=10"), QStringLiteral("--landscape"),
                       QStringLiteral("--margins"), QStringLiteral("2,1,1.25,1.5")})
                  .status,
              0);
    EXPECT_NEAR(corner().x(), 1.25 * 72, 1.5);
    EXPECT_NEAR(corner().y(), 2 * 72, 4);
    const Ended result = pdf(in, {QStringLiteral("--margins"), QStringLiteral("6,6,1,1")});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.error, "printman: pdf: the margins leave no room on the page; see 'printman "
                            "pdf --help'\n");
}

TEST_F(Pdf, aMissingToolIsNamedWithItsPackage) {
    environment_.insert(QStringLiteral("PATH"), tools_.path());
    write(in, small_report);
    write(out, "earlier");
    expect_failure(pdf(in), "ps2pdf is not installed; the Debian package ghostscript has it");
    EXPECT_EQ(read(out), "earlier");
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(Pdf, aMachineWithoutFontsIsTold) {
    write(QStringLiteral("fonts.conf"),
          "<?xml version=\"1.0\"?><fontconfig><dir>/nonexistent</dir></fontconfig>");
    environment_.insert(QStringLiteral("FONTCONFIG_FILE"), path(QStringLiteral("fonts.conf")));
    write(in, small_report);
    write(out, "earlier");
    expect_failure(pdf(in), "no font can be loaded for \"Courier New\"");
    EXPECT_EQ(read(out), "earlier");
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(Pdf, aFailingToolLeavesTheEarlierFile) {
    write(in, small_report);
    write(out, "earlier");
    struct Case {
        QByteArray script;
        QByteArray line;
    };
    for (const Case& c : {
             Case{"echo; echo 'Error: no paper'; exit 3",
                  "ps2pdf failed with status 3: Error: no paper"},
             Case{"echo half > \"$2\"; kill -KILL $$", "ps2pdf was ended by signal 9"},
             Case{": > \"$2\"", "ps2pdf produced an incomplete file"},
             Case{"exit 0", "ps2pdf produced an incomplete file"},
             Case{"echo nonsense > \"$2\"", "ps2pdf produced an incomplete PDF file"},
             Case{"echo %PDF-1.4 > \"$2\"", "ps2pdf produced an incomplete file"},
         }) {
        stub_ps2pdf(c.script);
        expect_failure(pdf(in), c.line);
        EXPECT_EQ(read(out), "earlier");
        EXPECT_EQ(files(), (QStringList{in, out}));
        EXPECT_EQ(scratch(), QStringList());
    }
}

TEST_F(Pdf, theToolGetsPlainNamesWhateverTheUsersAre) {
    stub_ps2pdf("echo \"$#:${1#\"$TMPDIR/\"}:${2#\"$TMPDIR/\"}\" > \"" +
                QFile::encodeName(path(QStringLiteral("said"))) +
                "\"; printf '%%PDF-1.4\\n%%%%EOF\\n' > \"$2\"");
    const QString odd = QStringLiteral("-a %d 'b' \"c\" $(touch x)");
    write(odd, small_report);
    const Ended result =
        run({QStringLiteral("pdf"), QStringLiteral("--"), odd, odd + QStringLiteral(".pdf")});
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^2:report\\.ps:kv\\d+\\.pdf\n$"))
                    .match(QString::fromLatin1(read(QStringLiteral("said"))))
                    .hasMatch());
    EXPECT_EQ(read(odd + QStringLiteral(".pdf")), "%PDF-1.4\n%%EOF\n");
    EXPECT_FALSE(exists(QStringLiteral("x")));
}

TEST_F(Pdf, aScratchDirectoryThatCannotBeMadeIsTold) {
    environment_.insert(QStringLiteral("TMPDIR"), QStringLiteral("/dev/null"));
    write(in, small_report);
    const Ended result = pdf(in);
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(
        result.error.startsWith("printman: cannot create a temporary directory in /dev/null: "))
        << result.error.constData();
    EXPECT_EQ(result.error.count('\n'), 1);
    EXPECT_FALSE(exists(out));
}

TEST_F(Pdf, interruptionEndsTheToolAndLeavesTheEarlierFile) {
    const QString started = QStringLiteral("started");
    const QByteArray name = QFile::encodeName(path(started));
    stub_ps2pdf("sleep 3600 & echo $! > \"" + name + ".new\"; mv \"" + name + ".new\" \"" + name +
                "\"; wait");
    write(in, small_report);
    write(out, "earlier");
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        QFile::remove(path(started));
        const Ended result =
            interrupt({QStringLiteral("pdf"), in, out}, number, [&] { return exists(started); });
        expect_failure(result, "interrupted");
        EXPECT_EQ(read(out), "earlier");
        EXPECT_EQ(files(), (QStringList{in, out, started}));
        EXPECT_EQ(scratch(), QStringList());
        EXPECT_TRUE(testsupport::process_ends(read(started)));
    }
}

TEST_F(Pdf, interruptionWhilePaintingLeavesTheEarlierFile) {
    const QString painted = QStringLiteral("painted");
    stub_ps2pdf(": > \"" + QFile::encodeName(path(painted)) + "\"; exec sleep 3600");
    write(out, "earlier");
    // Where all pages were painted before the interrupt came, more are.
    int pages = 10000;
    do {
        QFile::remove(path(painted));
        pages *= 2;
        write(in, small_report.repeated(pages));
        const Ended result = interrupt({QStringLiteral("pdf"), in, out}, SIGINT,
                                       [&] { return !scratch().isEmpty(); });
        expect_failure(result, "interrupted");
    } while (exists(painted) && pages < 5000000);
    EXPECT_EQ(read(out), "earlier");
    EXPECT_EQ(files(), (QStringList{in, out}));
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(Pdf, interruptionLeavesNothingOfGhostscripts) {
    // Behind the pages it reads a program that does not end.
    stub_ps2pdf("{ cat \"$1\"; echo '{} loop'; } | /usr/bin/ps2pdf - \"$2\"");
    write(in, small_report.repeated(20));
    const auto works = [this] {
        QDirIterator all(scratch_.path(), {QStringLiteral("gs_*")}, QDir::Files,
                         QDirIterator::Subdirectories);
        return all.hasNext();
    };
    expect_failure(interrupt({QStringLiteral("pdf"), in, out}, SIGINT, works), "interrupted");
    EXPECT_EQ(scratch(), QStringList());
    EXPECT_EQ(files(), QStringList{in});
}

TEST_F(Pdf, aTerminalIsToldThatAToolWorks) {
    const QString seen = QStringLiteral("seen");
    stub_ps2pdf("until [ -e \"" + QFile::encodeName(path(seen)) +
                "\" ]; do sleep 0.1; done\nprintf '%%PDF-1.4\\n%%%%EOF\\n' > \"$2\"");
    write(in, small_report);
    const Ended result =
        on_terminal({QStringLiteral("pdf"), in, out}, "making the PDF, ", [&] { write(seen, ""); });
    EXPECT_EQ(result.status, 0);
    const auto last = QRegularExpression(QStringLiteral("\rmaking the PDF, \\d+ s\r( +)\r$"))
                          .match(QString::fromLatin1(result.out));
    ASSERT_TRUE(last.hasMatch()) << result.out.constData();
    // What was shown is erased.
    EXPECT_EQ(last.capturedLength(), 2 * last.capturedLength(1) + 3);
}

TEST_F(Pdf, aRelativeScratchDirectoryIsThatOfTheCaller) {
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("scratch")));
    environment_.insert(QStringLiteral("TMPDIR"), QStringLiteral("scratch"));
    write(in, small_report);
    EXPECT_EQ(pdf(in).error, "");
    EXPECT_TRUE(read(out).startsWith("%PDF-"));
    EXPECT_TRUE(QDir(path(QStringLiteral("scratch"))).isEmpty());
}

TEST_F(Pdf, aToolsStatusIsKnownThoughTheCallerIgnoresItsChildren) {
    stub_ps2pdf("exit 4");
    write(in, small_report);
    const QString script = QStringLiteral("trap '' CHLD; exec \"$0\" pdf in.rpt out.pdf");
    expect_failure(
        run_program(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script, program()}),
        "ps2pdf failed with status 4");
}
