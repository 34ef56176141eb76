#include "tests/host/program.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// What stands in the input's place, and what every command says of it.
struct BadInput {
    const char* name;
    QByteArray bytes;
    QByteArray says; ///< behind the file's name
};

std::vector<BadInput> no_reports() {
    const QByteArray geometry_limits =
        " is out of range: 1 to 32767 columns and lines, 67108864 cells";
    return {
        {"empty", "", ": The file is empty"},
        {"foreign",
         QByteArray("\x7f"
                    "ELF\0\0\0\n",
                    9) +
             QByteArray(2000, '\xcc'),
         ": no page: no line starts with \"#!?PAGETOP\""},
        {"text", "just some text\nand more\n", ": no page: no line starts with \"#!?PAGETOP\""},
        {"without geometry", "#!?PAGETOP\na\n#!?PAGEEND\n",
         ":1: the first page start has no geometry (\"#!?PAGETOP columns,lines\")"},
        {"without comma", "\n#!?PAGETOP 80 24\na\n#!?PAGEEND\n",
         ":2: the first page start has no geometry (\"#!?PAGETOP columns,lines\")"},
        {"no lines", "#!?PAGETOP 80,0\na\n#!?PAGEEND\n", ":1: geometry 80,0 has no lines"},
        {"negative", "#!?PAGETOP -80,24\na\n#!?PAGEEND\n", ":1: geometry -80,24" + geometry_limits},
        {"absurd", "#!?PAGETOP 999999999,66\na\n#!?PAGEEND\n",
         ":1: geometry 999999999,66" + geometry_limits},
        {"huge grid", "#!?PAGETOP 32767,32767\na\n#!?PAGEEND\n",
         ":1: geometry 32767,32767" + geometry_limits},
    };
}

class BadInputs : public ProgramTest {
protected:
    /// Runs each command that reads a report; none may succeed or write anything.
    void expect_all_fail(const QString& name, const QByteArray& line) const {
        const QStringList before = files();
        const QString out = QStringLiteral("out");
        for (const QStringList& arguments : {QStringList{QStringLiteral("info"), name},
                                             {QStringLiteral("text"), name, out},
                                             {QStringLiteral("pdf"), name, out},
                                             {QStringLiteral("png"), name, out}}) {
            const Ended result = run(arguments);
            expect_failure(result, line);
            EXPECT_EQ(result.out, "");
        }
        EXPECT_EQ(files(), before);
        EXPECT_EQ(scratch(), QStringList());
    }
};

} // namespace

TEST_F(BadInputs, noReportIsToldInOneLine) {
    for (const BadInput& input : no_reports()) {
        write(QStringLiteral("in.rpt"), input.bytes);
        SCOPED_TRACE(input.name);
        expect_all_fail(QStringLiteral("in.rpt"), "in.rpt" + input.says);
        const Ended check = run({QStringLiteral("check"), QStringLiteral("in.rpt")});
        EXPECT_EQ(check.status, 1);
        EXPECT_EQ(check.error.count('\n'), 1);
    }
}

TEST_F(BadInputs, whatCannotBeReadIsTold) {
    expect_all_fail(QStringLiteral("missing"), "missing: No such file or directory");
    expect_all_fail(QStringLiteral("/dev/null"),
                    "/dev/null: Not a regular file; it is read more than once");
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("folder")));
    expect_all_fail(QStringLiteral("folder"), "folder: Is a directory");
    ASSERT_TRUE(QFile::link(QStringLiteral("nowhere"), path(QStringLiteral("link"))));
    expect_all_fail(QStringLiteral("link"), "link: No such file or directory");
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(QStringLiteral("pipe"))).constData(), 0600), 0);
    expect_all_fail(QStringLiteral("pipe"), "pipe: Not a regular file; it is read more than once");
    if (::geteuid() == 0)
        return;
    write(QStringLiteral("locked"), small_report);
    QFile::setPermissions(path(QStringLiteral("locked")), {});
    expect_all_fail(QStringLiteral("locked"), "locked: Permission denied");
}

TEST_F(BadInputs, tooLongNamesAreRefused) {
    const QString folder(200, u'd');
    ASSERT_TRUE(QDir(directory_.path()).mkdir(folder));
    const QString name = folder + u'/' + QString(60, u'r');
    write(name, small_report);
    expect_all_fail(name, name.toLatin1() + ": The name is longer than 255 bytes");
}

TEST_F(BadInputs, checkNamesEachFaultWithItsLine) {
    write(QStringLiteral("bad.rpt"), "#!?PAGETOP 20,4\n"
                                     "good\n"
                                     "#!?X1,2;\n"
                                     "#!?L1,5,\n" +
                                         QByteArray(600, 'x') + "\n" +
                                         QByteArray("zero\0byte\r\n", 11) + "#!?PAGEEND\n");
    const Ended result = run({QStringLiteral("check"), QStringLiteral("bad.rpt")});
    EXPECT_EQ(result.status, 1);
    const QList<QByteArray> lines = result.out.trimmed().split('\n');
    EXPECT_EQ(result.error,
              "printman: " + QByteArray::number(lines.size()) + " faults in bad.rpt\n");
    for (const char* place : {"bad.rpt:3: ", "bad.rpt:4: ", "bad.rpt:5: ", "bad.rpt:6: "})
        EXPECT_TRUE(result.out.contains(place)) << place;
    EXPECT_FALSE(result.out.contains("bad.rpt:2: "));
}

TEST_F(BadInputs, oneFaultIsSingular) {
    write(QStringLiteral("bad.rpt"), "#!?PAGETOP 20,4\na\n#!?X;\n#!?PAGEEND\n");
    EXPECT_EQ(run({QStringLiteral("check"), QStringLiteral("bad.rpt")}).error,
              "printman: 1 fault in bad.rpt\n");
}

TEST_F(BadInputs, controlBytesInNamesStayOnTheLine) {
    const Ended result = run({QStringLiteral("info"), QStringLiteral("no\nsuch\x1b[1mfile")});
    expect_failure(result, "no?such?[1mfile: No such file or directory");
}

TEST_F(BadInputs, brokenMarkersAndBytesYieldAPage) {
    write(QStringLiteral("r.rpt"), "#!?PAGETOP 20,6\n"
                                   "#!?X1,2;shown\n"
                                   "#!?L1,5,\n"
                                   "#!?T5,20\n" +
                                       QByteArray("zero\0byte\n", 10) + "crlf\r\n" +
                                       QByteArray(600, 'x') + "\n#!?PAGEEND\n");
    const QString report = QStringLiteral("r.rpt");
    for (const QStringList& arguments :
         {QStringList{QStringLiteral("text"), report, QStringLiteral("o.txt")},
          {QStringLiteral("pdf"), report, QStringLiteral("o.pdf")},
          {QStringLiteral("png"), report, QStringLiteral("o.png")}}) {
        const Ended result = run(arguments);
        EXPECT_EQ(result.status, 0) << result.error.constData();
        EXPECT_EQ(result.error, "");
    }
    const QList<QByteArray> lines = read(QStringLiteral("o.txt")).split('\n');
    ASSERT_EQ(lines.size(), 7);
    EXPECT_EQ(lines[0], "#!?X1,2;shown");
    EXPECT_EQ(lines[1], "#!?L1,5,");
    EXPECT_EQ(lines[2], "");
    EXPECT_EQ(lines[3], "zer");
    EXPECT_EQ(lines[4], "crlf\r");
    EXPECT_EQ(lines[5], QByteArray(20, 'x'));
}

TEST_F(BadInputs, aReportThatEndsEarlyYieldsItsPages) {
    write(QStringLiteral("r.rpt"), "#!?PAGETOP 20,3\none\n#!?PAGEEND\n#!?PAGETOP\ntwo");
    EXPECT_EQ(
        run({QStringLiteral("text"), QStringLiteral("r.rpt"), QStringLiteral("o.txt")}).status, 0);
    EXPECT_EQ(read(QStringLiteral("o.txt")), "one\n\n\ntw\n\n\n");
}

TEST_F(BadInputs, namesWithOddCharactersWork) {
    const QString odd = QStringLiteral("'\u00e4\" $(touch x) %d;.rpt");
    write(odd, small_report);
    for (const char* kind : {"text", "pdf", "png", "import"}) {
        const QString out = odd + QString::fromLatin1(kind);
        const Ended result = run({QString::fromLatin1(kind), odd, out});
        EXPECT_EQ(result.error, "");
        EXPECT_TRUE(exists(out)) << kind;
    }
    EXPECT_EQ(files().size(), 5);
}

TEST_F(BadInputs, namesNeedNotBeTextInTheLocalesEncoding) {
    write(QStringLiteral("r.rpt"), small_report);
    const QByteArray odd = QFile::encodeName(directory_.path()) + "/\xe4.rpt";
    ASSERT_EQ(
        ::rename(QFile::encodeName(path(QStringLiteral("r.rpt"))).constData(), odd.constData()), 0);
    const QString script = QStringLiteral(
        "for c in pdf png import; do \"$0\" $c ./*.rpt \"$(echo ./*.rpt).$c\" || exit 9; done\n"
        "\"$0\" text ./*.rpt good.txt && \"$0\" text ./*.rpt \"$(echo ./*.rpt).txt\"");
    const Ended result =
        run_program(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script, program()});
    expect_failure(result,
                   "cannot write ./?.rpt.txt: The name is not valid in the locale's encoding");
    for (const char* kind : {".pdf", ".png", ".import"})
        EXPECT_EQ(::unlink((odd + kind).constData()), 0) << kind;
    EXPECT_EQ(::unlink(odd.constData()), 0);
    EXPECT_EQ(files(), QStringList{QStringLiteral("good.txt")});
}
