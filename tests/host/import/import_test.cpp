#include "tests/host/program.h"

#include <QDir>

namespace {

class Import : public ProgramTest {
protected:
    /// Imports the listing and writes the report's text.
    QByteArray round_trip(const QByteArray& listing, const QStringList& options = {}) const {
        write(QStringLiteral("in.txt"), listing);
        const Ended imported = run(QStringList{QStringLiteral("import"), QStringLiteral("in.txt"),
                                               QStringLiteral("out.rpt")} +
                                   options);
        EXPECT_EQ(imported.error, "");
        EXPECT_EQ(imported.status, 0);
        EXPECT_EQ(
            run({QStringLiteral("text"), QStringLiteral("out.rpt"), QStringLiteral("out.txt")})
                .status,
            0);
        return read(QStringLiteral("out.txt"));
    }

    QByteArray info() const { return run({QStringLiteral("info"), QStringLiteral("out.rpt")}).out; }

    /// The program's line for a listing that is refused; nothing may be written.
    QByteArray refusal(const QByteArray& listing, const QStringList& options = {}) const {
        write(QStringLiteral("in.txt"), listing);
        const Ended result = run(QStringList{QStringLiteral("import"), QStringLiteral("in.txt"),
                                             QStringLiteral("bad.rpt")} +
                                 options);
        EXPECT_EQ(result.status, 1);
        EXPECT_FALSE(exists(QStringLiteral("bad.rpt")));
        return result.error;
    }

    QByteArray pr(const QStringList& options, const QString& file) const {
        return run_program(QStringLiteral("pr"), options + QStringList{file}).out;
    }

    QByteArray expanded(const QByteArray& listing) const {
        write(QStringLiteral("tabs"), listing);
        return run_program(QStringLiteral("expand"), {QStringLiteral("tabs")}).out;
    }
};

QStringList licences() {
    QStringList files;
    const QDir folder(QStringLiteral("/usr/share/common-licenses"));
    for (const QString& name : folder.entryList(QDir::Files))
        files << folder.filePath(name);
    return files;
}

/// Pads each page of a form-feed listing to @p lines lines.
QByteArray padded(const QByteArray& listing, qsizetype lines) {
    QByteArray text;
    QList<QByteArray> pages = listing.split('\f');
    if (pages.last().isEmpty())
        pages.removeLast();
    for (const QByteArray& page : pages)
        text += page + QByteArray(lines - page.count('\n'), '\n');
    return text;
}

} // namespace

TEST_F(Import, fullPagesComeBackByteForByte) {
    ASSERT_FALSE(licences().isEmpty());
    for (const QString& licence : licences()) {
        SCOPED_TRACE(licence.toStdString());
        const QByteArray listing = pr({}, licence);
        ASSERT_EQ(listing.count('\n') % 66, 0);
        EXPECT_TRUE(round_trip(listing) == expanded(listing));
        EXPECT_EQ(run({QStringLiteral("check"), QStringLiteral("out.rpt")}).out, "no faults\n");
    }
}

TEST_F(Import, formFeedPagesComeBackLineForLine) {
    ASSERT_FALSE(licences().isEmpty());
    for (const QString& licence : licences()) {
        SCOPED_TRACE(licence.toStdString());
        const QByteArray listing = pr({QStringLiteral("-f")}, licence);
        ASSERT_TRUE(listing.contains('\f'));
        const QByteArray text = round_trip(listing);
        const qsizetype pages = listing.count('\f') + (listing.endsWith('\f') ? 0 : 1);
        EXPECT_TRUE(info().contains("pages: " + QByteArray::number(pages) + '\n'))
            << info().constData();
        const qsizetype lines = text.count('\n') / pages;
        EXPECT_TRUE(text == padded(expanded(listing), lines));
    }
}

TEST_F(Import, linesThatLookLikeMarkersComeBack) {
    QByteArray listing;
    for (const char* line :
         {"#!?T5,20;", "#!?PAGETOP 80,24", "#!?PAGEEND", "#!?", "a #!?L1,2,3; b", "##!?R1,2,3;",
          "#!?#!?T1,2;", "#!?X", "#!?T", "#!?T1,2", "x#!?L1,2,", "#", "#!", "#!?T0,0;#!?T0,0;",
          "                                                 #!?PAGETOP 1,1",
          "                                                #!?PAGETOP 1,1",
          "                                                  #!?PAGEEND"})
        listing += QByteArray(line) + '\n';
    EXPECT_EQ(round_trip(listing, {QStringLiteral("--lines"), QStringLiteral("17")}), listing);
    EXPECT_TRUE(info().contains("pages: 1\n"));
}

TEST_F(Import, allBytesComeBack) {
    QByteArray listing;
    for (int c = 1; c < 256; ++c) {
        if (!QByteArray("\t\n\f\r").contains(static_cast<char>(c)))
            listing += static_cast<char>(c);
    }
    listing += '\n';
    EXPECT_EQ(round_trip(listing, {QStringLiteral("--lines"), QStringLiteral("1")}), listing);
}

TEST_F(Import, geometryFollowsTheListing) {
    round_trip("12345\n123\n");
    EXPECT_TRUE(info().startsWith("columns: 6\nlines: 66\npages: 1\n"));
    round_trip("1\n2\n3\f1\n2\n");
    EXPECT_TRUE(info().startsWith("columns: 2\nlines: 3\npages: 2\n"));
    round_trip("1\n2\n3\n4\n5\n",
               {QStringLiteral("--lines=2"), QStringLiteral("--columns"), QStringLiteral("80")});
    EXPECT_TRUE(info().startsWith("columns: 80\nlines: 2\npages: 3\n"));
    round_trip("\n");
    EXPECT_TRUE(info().startsWith("columns: 1\nlines: 66\npages: 1\n"));
    round_trip("a\f\fb");
    EXPECT_TRUE(info().startsWith("columns: 2\nlines: 1\npages: 3\n"));
}

TEST_F(Import, carriageControlMakesPages) {
    EXPECT_EQ(round_trip("1Title\n+_____\n0first\n second\n1Next\n", {QStringLiteral("--asa")}),
              "Title\n\nfirst\nsecond\nNext\n\n\n\n");
}

TEST_F(Import, theLongestLineThatAReportHolds) {
    const QByteArray line(510, 'x');
    EXPECT_EQ(round_trip(line + '\n', {QStringLiteral("--lines=1")}), line + '\n');
    EXPECT_EQ(refusal("a\n" + QByteArray(511, 'x') + '\n'),
              "printman: in.txt:2: the line takes 511 bytes in a report; the limit is 510\n");
    EXPECT_EQ(refusal(QByteArray(505, 'x') + "#!?T1,2;"),
              "printman: in.txt:1: the line takes 521 bytes in a report; the limit is 510\n");
}

TEST_F(Import, refusalsNameTheLine) {
    EXPECT_EQ(refusal(""), "printman: in.txt: The file is empty\n");
    EXPECT_EQ(refusal("\f"), "printman: in.txt: The listing has no page\n");
    EXPECT_EQ(refusal(QByteArray("a\nb\0\n", 5)),
              "printman: in.txt:2: the line contains a zero byte\n");
    EXPECT_EQ(refusal("a\nab\rcd\n"), "printman: in.txt:2: two different characters are printed "
                                      "over each other in column 1\n");
    EXPECT_EQ(refusal("1a\n?b\n", {QStringLiteral("--asa")}),
              "printman: in.txt:2: '?' is not a carriage control character\n");
    EXPECT_EQ(refusal("abc\nabcdef\n", {QStringLiteral("--columns=5")}),
              "printman: in.txt:2: the line has more than 5 characters\n");
    EXPECT_EQ(
        refusal(QByteArray(32768, '\n') + '\f'),
        "printman: in.txt: A page has 32768 lines, more than 32767; use --lines to break it\n");
    EXPECT_EQ(refusal("a\n", {QStringLiteral("--columns=32767"), QStringLiteral("--lines=32767")}),
              "printman: in.txt: A page of 32767 columns and 32767 lines is too large\n");
}

TEST_F(Import, aPipeIsRefused) {
    const QString script = QStringLiteral("echo text | \"$0\" import /dev/stdin out.rpt");
    expect_failure(
        run_program(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script, program()}),
        "/dev/stdin: Not a regular file; it is read more than once");
    EXPECT_EQ(files(), QStringList());
}

TEST_F(Import, anEarlierFileStaysWhenTheListingIsRefused) {
    write(QStringLiteral("out.rpt"), "earlier");
    write(QStringLiteral("in.txt"), QByteArray("a\0", 2));
    EXPECT_EQ(
        run({QStringLiteral("import"), QStringLiteral("in.txt"), QStringLiteral("out.rpt")}).status,
        1);
    EXPECT_EQ(read(QStringLiteral("out.rpt")), "earlier");
}
