#include "tests/host/program.h"
#include "tests/support/tools.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

using testsupport::text;

namespace {

class Print : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        write(in, small_report);
        write(text("printers.ini"),
              "[LASER]\nname=laser queue\nfont=Courier New\nsize=10\nmargins=1,1,1,1\n"
              "[-x $(touch x)]\nname=$(touch y)\n[LINES]\nname=Generic\n");
        ASSERT_EQ(make(text("printers.ini")).error, "");
        before_ = files();
    }

    Ended make(const QString& description) const {
        return run({text("printers"), text("--settings"), conf, text("--make"), description});
    }

    Ended list() const { return run({text("printers"), text("--settings"), conf}); }

    Ended print(const QStringList& options, const QString& report = text("in.rpt")) const {
        return run(QStringList{text("print"), text("--settings"), conf} + options +
                   QStringList{text("--"), report});
    }

    /// Makes a script the only spooler: it keeps what it is given, and its own arguments.
    void stub_lp(const QByteArray& end = "exit 0") {
        const QByteArray said = QFile::encodeName(path(text("said")));
        stub("lp",
             "for a; do echo \"<$a>\"; done > '" + said + "'\ncat > '" + said + ".ps'\n" + end);
    }

    static int pages(const QByteArray& ps) { return static_cast<int>(ps.count("\n%%Page: ")); }

    const QString in = text("in.rpt");
    const QString conf = text("conf");
    const QString setup_file = text("conf/PRTSETUP.BIN");
    const QStringList on_laser{text("--printer"), text("LASER")};
    QStringList before_;
};

/// A report whose page n has the word "pagen".
QByteArray numbered(int count) {
    QByteArray report;
    for (int page = 1; page <= count; ++page)
        report += "#!?PAGETOP 80,3\npage" + QByteArray::number(page) + "\n#!?PAGEEND\n";
    return report;
}

} // namespace

TEST_F(Print, theSpoolerGetsTheReport) {
    stub_lp();
    const Ended result = print(on_laser);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(read(text("said")), "<-d>\n<laser queue>\n");
    const QByteArray ps = read(text("said.ps"));
    EXPECT_EQ(pages(ps), 1);
    EXPECT_TRUE(ps.contains("%%Title: (in)"));
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(Print, copiesAreThePagesAgain) {
    write(in, numbered(2));
    stub_lp();
    EXPECT_EQ(print(on_laser + QStringList{text("--copies=3")}).error, "");
    EXPECT_EQ(pages(read(text("said.ps"))), 6);
}

TEST_F(Print, aServerJobsFileIsThePostScriptAndTheSetupFileStays) {
    const QByteArray setup = read(setup_file);
    write(in, numbered(2));
    const QString out = text("-o $(touch x).ps");
    const auto words = [&](const QStringList& options) {
        EXPECT_EQ(print(on_laser + options + QStringList{text("--server=") + out}).error, "");
        EXPECT_EQ(run_program(text("ps2pdf"), {path(out), path(text("o.pdf"))}).status, 0);
        return QString::fromUtf8(
                   run_program(text("pdftotext"), {path(text("o.pdf")), text("-")}).out)
            .simplified();
    };
    EXPECT_EQ(words({text("--copies=2")}), text("page1 page2 page1 page2"));
    EXPECT_EQ(words({text("--copies=2"), text("--no-collate")}), text("page1 page1 page2 page2"));
    EXPECT_EQ(read(setup_file), setup);
    EXPECT_FALSE(exists(text("x")));
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(Print, aServerJobsFileMayBeAPipe) {
    const Ended result = print(on_laser + QStringList{text("--server=/dev/stdout")});
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(result.out.startsWith("%!PS-"));
    EXPECT_EQ(pages(result.out), 1);
}

TEST_F(Print, anUnknownPrinterIsTold) {
    write(text("out.ps"), "earlier");
    for (const char* id : {"NONE", "laser", "a 'b' $(touch x)", "-d"}) {
        const QStringList options{text("--printer=") + text(id)};
        const QByteArray line = "Can not find report printer '" + QByteArray(id) + "'";
        expect_failure(print(options), line);
        expect_failure(print(options + QStringList{text("--server=out.ps")}), line);
    }
    EXPECT_EQ(read(text("out.ps")), "earlier");
    QFile::remove(path(setup_file));
    const QByteArray line =
        "Can not find report printer 'LASER': " + QFile::encodeName(path(setup_file)) +
        " does not exist; printman printers --make creates it";
    expect_failure(print(on_laser), line);
    expect_failure(print(on_laser + QStringList{text("--server=out.ps")}), line);
    expect_failure(
        run(QStringList{text("pdf"), text("--settings"), conf, in, text("o.pdf")} + on_laser),
        line);
    EXPECT_FALSE(exists(text("x")));
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(Print, hostileNamesReachTheSpoolerAsTheyAre) {
    const QString odd = text("-a %d 'b' \"c\" $(touch x)");
    write(odd, small_report);
    stub_lp();
    EXPECT_EQ(print({text("--printer=-x $(touch x)")}, odd).error, "");
    EXPECT_EQ(read(text("said")), "<-d>\n<$(touch y)>\n");
    EXPECT_FALSE(exists(text("x")));
    EXPECT_FALSE(exists(text("y")));
}

TEST_F(Print, aFailingSpoolerIsToldOnce) {
    stub_lp("echo 'lp: no such queue' >&2; exit 3");
    expect_failure(print(on_laser), "lp failed with status 3: lp: no such queue");
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(Print, aGenericPrinterGetsTextAndLeavesNothing) {
    stub_lp();
    EXPECT_EQ(print({text("--printer=LINES")}).error, "");
    EXPECT_EQ(read(text("said")), "<-d>\n<Generic>\n");
    EXPECT_EQ(files(), before_ + QStringList({text("said"), text("said.ps")}));
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(Print, aGenericPrinterGetsEachPageOnceWithItsColumnsInLine) {
    QByteArray report;
    for (const char* page : {"one", "two", "three"})
        report += "#!?PAGETOP 132,66\n" + QByteArray("iiii").leftJustified(124) + page + '\n' +
                  QByteArray("MMMM").leftJustified(124) + "next\n" + QByteArray(64, '\n') +
                  "#!?PAGEEND\n";
    write(in, report);
    stub_lp();
    EXPECT_EQ(print({text("--printer=LINES")}).error, "");
    ASSERT_EQ(run_program(text("ps2pdf"), {path(text("said.ps")), path(text("o.pdf"))}).status, 0);
    const QString boxes = QString::fromUtf8(
        run_program(text("pdftotext"), {text("-bbox"), path(text("o.pdf")), text("-")}).out);
    const QRegularExpression word(
        text("<word xMin=\"([\\d.]+)\"[^>]*xMax=\"([\\d.]+)\"[^>]*>(one|two|three|next)<"));
    QStringList words;
    for (auto match = word.globalMatch(boxes); match.hasNext();) {
        const auto box = match.next();
        words << box.captured(3);
        EXPECT_EQ(box.captured(1), word.match(boxes).captured(1));
        EXPECT_LT(box.captured(2).toDouble(), 595 - 36);
    }
    EXPECT_EQ(words, (QStringList{text("one"), text("next"), text("two"), text("next"),
                                  text("three"), text("next")}));
}

TEST_F(Print, aSetupFileThatIsNoFileIsTold) {
    ASSERT_TRUE(QFile::remove(path(setup_file)));
    const QByteArray name = QFile::encodeName(path(setup_file));
    ASSERT_EQ(::mkfifo(name.constData(), 0600), 0);
    for (const QStringList& where : {QStringList{}, {text("--server=out.ps")}})
        expect_failure(print(on_laser + where),
                       name + ": Not a regular file; it is read more than once");
    EXPECT_FALSE(exists(text("out.ps")));
}

TEST_F(Print, aFullScratchDirectoryIsNamed) {
    write(in, numbered(3000));
    // The system then refuses a larger file, and the program hears of it as of a full disk.
    const QString script = text("trap '' XFSZ; ulimit -f 64; exec \"$0\" print --settings conf "
                                "in.rpt --printer LASER --server out.ps");
    const Ended result = run_program(text("/bin/sh"), {text("-c"), script, program()});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(QRegularExpression(text("^printman: ") + scratch_.path() +
                                   text("/printman-\\w+/report\\.ps: File too large\n$"))
                    .match(QString::fromUtf8(result.error))
                    .hasMatch())
        << result.error.constData();
    EXPECT_FALSE(exists(text("out.ps")));
    EXPECT_EQ(scratch(), QStringList());
}

TEST_F(Print, aDescriptionMayComeFromAPipe) {
    ASSERT_TRUE(QFile::remove(path(setup_file)));
    const QString script =
        text("cat printers.ini | \"$0\" printers --settings conf --make /dev/stdin");
    EXPECT_EQ(run_program(text("/bin/sh"), {text("-c"), script, program()}).error, "");
    EXPECT_EQ(list().out.count('\n'), 4);
    expect_failure(make(text("/dev/zero")), "/dev/zero: The file is too large");
    expect_failure(make(text("/dev/null")), "/dev/null: The file is empty");
    expect_failure(make(text("/")), "/: Is a directory");
}

TEST_F(Print, namesThatAreNoTextAreTakenOrRefusedInWords) {
    const QString script = text("mv printers.ini \"$(printf 'p\\377')\"; "
                                "\"$0\" printers --settings conf --make \"$(printf 'p\\377')\" && "
                                "\"$0\" printers --settings \"$(printf 'c\\377')\"");
    expect_failure(run_program(text("/bin/sh"), {text("-c"), script, program()}),
                   "c?: The name is not valid in the locale's encoding");
    EXPECT_EQ(::unlink((QFile::encodeName(directory_.path()) + "/p\xff").constData()), 0);
    const QString config = text("XDG_CONFIG_HOME=\"$(printf '/tmp/\\377')\" \"$0\" printers");
    expect_failure(run_program(text("/bin/sh"), {text("-c"), config, program()}),
                   "/tmp/?/printman/PRTSETUP.BIN: The name is not valid in the locale's encoding");
}

TEST_F(Print, aSettingTurnsThePageMapOff) {
    const auto server = [this] {
        EXPECT_EQ(print(on_laser + QStringList{text("--server=o.ps")}).error, "");
        return read(text("o.ps"));
    };
    const QByteArray filled = server();
    environment_.insert(text("NOPAGEMAP"), text("yes"));
    EXPECT_NE(server(), filled);
}

TEST_F(Print, aRelativePrintiniIsThatOfTheCaller) {
    environment_.insert(text("PRTINI"), conf);
    stub_lp();
    EXPECT_EQ(run({text("print"), in, text("--printer=LASER")}).error, "");
    EXPECT_EQ(read(text("said")), "<-d>\n<laser queue>\n");
}

TEST_F(Print, interruptionLeavesTheEarlierFile) {
    const auto interrupted = [this](const QStringList& where) {
        return interrupt(QStringList{text("print"), text("--settings"), conf, in} + on_laser +
                             where,
                         SIGTERM, [this] { return !scratch().isEmpty(); });
    };
    write(in, numbered(60000));
    stub_lp("exec sleep 3600");
    expect_failure(interrupted({}), "interrupted");
    EXPECT_EQ(scratch(), QStringList());
    // Where the file was made before the interrupt came, it is made of more pages.
    Ended result;
    for (int pages = 60000; result.status != 1 && pages < 5000000; pages *= 2) {
        write(in, numbered(pages));
        write(text("out.ps"), "earlier");
        result = interrupted({text("--server"), text("out.ps")});
    }
    expect_failure(result, "interrupted");
    EXPECT_EQ(scratch(), QStringList());
    EXPECT_EQ(read(text("out.ps")), "earlier");
}

TEST_F(Print, wrongUsageIsTold) {
    for (const QStringList& options :
         {QStringList{}, QStringList{text("--printer=")},
          on_laser + QStringList{text("--copies=0")}, on_laser + QStringList{text("--copies=1000")},
          on_laser + QStringList{text("--copies=two")}, on_laser + QStringList{text("--server=")},
          on_laser + QStringList{text("--server=in.rpt")},
          on_laser + QStringList{text("--colour")}}) {
        const Ended result = print(options);
        EXPECT_EQ(result.status, 2) << options.join(u' ').toStdString();
        EXPECT_TRUE(result.error.startsWith("printman: print: "));
        EXPECT_EQ(result.error.count('\n'), 1);
    }
    EXPECT_EQ(read(in), small_report);
}

TEST_F(Print, printersAreListed) {
    Ended result = list();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.count('\n'), 4);
    EXPECT_TRUE(result.out.contains("\nLASER          laser queue  A4     portrait     Courier "
                                    "New    10  -      1,1,1,1\n"))
        << result.out.constData();
    for (const QByteArray& empty : {QByteArray(8, '\0'), QByteArray()}) {
        write(setup_file, empty);
        result = list();
        EXPECT_EQ(result.status, 0);
        EXPECT_TRUE(result.out.endsWith("/conf/PRTSETUP.BIN: The file lists no printers\n"));
    }
    QFile::remove(path(setup_file));
    result = list();
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.error.endsWith("/conf/PRTSETUP.BIN: No such file or directory\n"));
    EXPECT_EQ(result.error.count('\n'), 1);
}

TEST_F(Print, aWrongDescriptionLeavesTheSetupFile) {
    const QByteArray setup = read(setup_file);
    write(text("bad.ini"), "[A]\nname=a\nsize=huge\n");
    expect_failure(make(text("bad.ini")),
                   "bad.ini:3: size needs a whole number from 1 to 2000, not 'huge'");
    expect_failure(make(text("none.ini")), "none.ini: No such file or directory");
    EXPECT_EQ(make(QString()).status, 2);
    EXPECT_EQ(read(setup_file), setup);
    EXPECT_EQ(QDir(path(conf)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{text("PRTSETUP.BIN")});
}
