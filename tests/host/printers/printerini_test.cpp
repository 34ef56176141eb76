#include "host/cli/printertable.h"
#include "host/printers/printerini.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

using Records = std::vector<printman::SetupRecord>;

QByteArray fault(const QByteArray& text) {
    Records records;
    const host::Outcome read = host::read_printers(text, "f", records);
    EXPECT_TRUE(records.empty() || read.ok());
    return read.message;
}

} // namespace

TEST(PrinterDescription, everyKeyIsTaken) {
    Records records;
    ASSERT_EQ(host::read_printers("; comment\r\n[A 1]\r\n NAME = laser one \r\nfont=Mono\n"
                                  "style=Bold\nsize=9\nweight=63\nitalic=yes\nunderline=1\n"
                                  "strikeout=TRUE\npaper=letter\norientation=Landscape\n"
                                  "margins=.5,1,0.25,2\npage_length=66\nfirst_line=2\n"
                                  "last_line=60\n[B]\nname=b\nbold=yes\npaper=29",
                                  "f", records)
                  .message,
              "");
    ASSERT_EQ(records.size(), 2);
    const printman::SetupRecord& a = records[0];
    EXPECT_NE(a.in_use, 0);
    EXPECT_STREQ(a.printer_id, "A 1");
    EXPECT_STREQ(a.printer_name, "laser one");
    EXPECT_STREQ(a.font_name, "Mono");
    EXPECT_STREQ(a.font.log_font.face_name, "Mono");
    EXPECT_STREQ(a.font.style_name, "Bold");
    EXPECT_EQ(a.font.point_size, 9);
    EXPECT_EQ(a.font.log_font.weight, 63);
    EXPECT_EQ(a.font.log_font.italic, 1);
    EXPECT_EQ(a.font.log_font.underline, 1);
    EXPECT_EQ(a.font.log_font.strike_out, 1);
    EXPECT_EQ(a.devmode.paper_size, 2);
    EXPECT_EQ(a.devmode.orientation, 1);
    EXPECT_EQ(a.margins.top, 0.5);
    EXPECT_EQ(a.margins.bottom, 1);
    EXPECT_EQ(a.margins.left, 0.25);
    EXPECT_EQ(a.margins.right, 2);
    EXPECT_NE(a.page.use_default_page_length, 0);
    EXPECT_EQ(a.page.page_length, 66);
    EXPECT_EQ(a.page.first_line, 2);
    EXPECT_EQ(a.page.last_line, 60);
    const printman::SetupRecord& b = records[1];
    EXPECT_STREQ(b.font.log_font.face_name, "Courier New");
    EXPECT_EQ(b.font.point_size, 12);
    EXPECT_EQ(b.font.log_font.weight, 75);
    EXPECT_EQ(b.devmode.paper_size, 29);
    EXPECT_EQ(b.page.use_default_page_length, 0);
}

TEST(PrinterDescription, faultsAreToldWithTheirLine) {
    struct Case {
        QByteArray text;
        QByteArray told;
    };
    for (const Case& c : {
             Case{"", "f: no printer is described"},
             Case{"; only a comment\n", "f: no printer is described"},
             Case{"name=a\n", "f:1: a key comes before the first section"},
             Case{"\n[A\n", "f:2: a section must end with ']'"},
             Case{"[]\n", "f:1: the id in [] must be a text"},
             Case{"[" + QByteArray(128, 'x') + "]", "f:1: the id in [] must be a text of at most "
                                                    "127 bytes"},
             Case{"[A]\nname=a\n\n[A]\n", "f:4: there is already a printer 'A'"},
             Case{"\n[A]\nsize=9\n\n[B]\nname=b\n", "f:2: the printer needs a name"},
             Case{"[A]\nname=a\ncolour=red\n", "f:3: unknown key 'colour'"},
             Case{"[A]\nname\n", "f:2: neither a section nor a line KEY=value"},
             Case{"[A]\nname=\n", "f:2: name needs a text, not ''"},
             Case{"[A]\nname=" + QByteArray(128, 'x'),
                  "f:2: name needs a text of at most 127 bytes, not '" + QByteArray(128, 'x') +
                      '\''},
             Case{"[A]\nname=a\nname=b\n", "f:3: name is given twice"},
             Case{"[A]\nname=a\nbold=yes\nweight=3\n", "f:4: weight is given twice"},
             Case{"[A]\nname=a\nsize=0\n",
                  "f:3: size needs a whole number from 1 to 2000, not '0'"},
             Case{"[A]\nitalic=maybe\n", "f:2: italic needs yes or no, not 'maybe'"},
             Case{"[A]\npaper=A11\n", "f:2: paper needs the name of a paper, such as A4 or Letter, "
                                      "or its number, 0 to 29, not 'A11'"},
             Case{"[A]\norientation=up\n",
                  "f:2: orientation needs portrait or landscape, not 'up'"},
             Case{"[A]\nmargins=1,2\n", "f:2: margins needs top,bottom,left,right in inches, each "
                                        "from 0 to 100, not '1,2'"},
             Case{"[A]\nname=a\nmargins=6,6,0,0\n", "f:1: the margins leave no room on the paper"},
             Case{"\n[A]\nname=a\nlast_line=59\nfirst_line=60\n",
                  "f:2: the last line comes before the first line"},
             Case{"[A]\nlast_line=-1\n",
                  "f:2: last_line needs a whole number from 0 to 32767, not '-1'"},
             Case{QByteArray("[A]\nname=a\0b\n", 13), "f:2: the line contains a zero byte"},
         })
        EXPECT_EQ(fault(c.text).toStdString(), c.told.toStdString());
}

TEST(PrinterDescription, aByteOrderMarkIsNoText) {
    Records records;
    EXPECT_EQ(host::read_printers("\xef\xbb\xbf[A]\nname=a\nfirst_line=7\n", "f", records).message,
              "");
    ASSERT_EQ(records.size(), 1);
    EXPECT_STREQ(records[0].printer_id, "A");
}

TEST(PrinterDescription, theExampleIsRight) {
    QFile file(QStringLiteral(PRINTMAN_SOURCE_DIR "/examples/printers.ini"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    Records records;
    EXPECT_EQ(host::read_printers(file.readAll(), "printers.ini", records).message, "");
    EXPECT_EQ(records.size(), 3);
}

TEST(PrinterTable, columnsAreAsWideAsATerminalShowsThem) {
    EXPECT_EQ(host::aligned_table({{"e\xcc\x81", "x"}, {"\xe5\xad\x97", "y"}, {"abc", "z"}}, {}),
              "e\xcc\x81    x\n\xe5\xad\x97   y\nabc  z\n");
}

TEST(PrinterTable, whatATerminalWouldObeyOrCannotShowIsReplaced) {
    EXPECT_EQ(host::aligned_table({{"a\xc2\x9b"
                                    "31mb"},
                                   {"\xff"
                                    "c\x9b"},
                                   {"\xc3\xa4\x7f\x1b"}},
                                  {}),
              "a?31mb\n?c?\n\xc3\xa4??\n");
}

TEST(PrinterTable, columnsAreAlignedAndControlBytesHarmless) {
    EXPECT_EQ(
        host::aligned_table({{"ID", "N", "LAST"}, {"\xc3\xa4", "10", "x"}, {"a\nb", "9", ""}}, {1}),
        "ID    N  LAST\n\xc3\xa4    10  x\na?b   9\n");
}
