#include "tests/support/tools.h"

#include <printman/output/pdfcommands.h>

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace printman;

using testsupport::text;

namespace {} // namespace

TEST(PdfCommands, areTheTemplatesWithTheirArguments) {
    EXPECT_EQ(ps2pdf_command(text("/tmp/korvo.ps"), text("/tmp/korvo.pdf")),
              "ps2pdf /tmp/korvo.ps /tmp/korvo.pdf");
    EXPECT_EQ(background_command(text("/tmp/a.pdf"), text("form.pdf"), text("/x/cp1.pdf")),
              "pdftk /tmp/a.pdf background form.pdf output /x/cp1.pdf");
    EXPECT_EQ(stamp_command(text("r.pdf"), text("w.pdf"), text("o.pdf")),
              "pdftk r.pdf stamp w.pdf output o.pdf");
    EXPECT_EQ(lpr_command(text("office"), text("/tmp/korvo.ps")), "lpr -P office /tmp/korvo.ps");
}

TEST(PdfCommands, fillAllMarkersAtOnce) {
    EXPECT_EQ(fill_command("t %1 %2 %3", {"%2", "%3%1", "c"}), "t %2 %3%1 c");
    EXPECT_EQ(background_command(text("%2"), text("%3"), text("%1")),
              "pdftk %2 background %3 output %1");
    EXPECT_EQ(lpr_command(text("%3"), text("%1")), "lpr -P %3 %1");
}

TEST(PdfCommands, giveTheWordsToTheMarkersByTheirNumbers) {
    EXPECT_EQ(fill_command("lpr -P %1 %3", {"a", "b"}), "lpr -P a b");
    EXPECT_EQ(fill_command("%2 %1 %2", {"a", "b"}), "b a b");
    EXPECT_EQ(fill_command("%12 %3", {"a", "b"}), "b a");
}

TEST(PdfCommands, leaveWhatIsNoMarker) {
    EXPECT_EQ(fill_command("100% %a %", {"a"}), "100% %a %");
    EXPECT_EQ(fill_command("", {"a"}), "");
    EXPECT_EQ(fill_command("%1 %2", {"a"}), "a %2");
}

TEST(PdfCommands, quoteWhateverTheShellCouldTakeForItself) {
    EXPECT_EQ(lpr_command(text("a b"), text("-f")), "lpr -P 'a b' ./-f");
    EXPECT_EQ(lpr_command(text("$(touch x)"), text("/tmp/a;b")), "lpr -P '$(touch x)' '/tmp/a;b'");
    EXPECT_EQ(lpr_command(text("-o"), text("")), "lpr -P '-o' ''");
    EXPECT_EQ(background_command(text("it's"), text("a\nb"), text("\"")),
              "pdftk 'it'\\''s' background 'a\nb' output '\"'");
}

TEST(PdfCommands, nameFilesSoThatThePdfToolTakesThemForFiles) {
    EXPECT_EQ(ps2pdf_command(text("%pipe%id"), text("/x/a%d/b.pdf")),
              "ps2pdf ./%pipe%id /x/a%%d/b.pdf");
    EXPECT_EQ(ps2pdf_command(text("@x"), text("|id")), "ps2pdf ./@x './|id'");
    EXPECT_EQ(stamp_command(text("PROMPT"), text("w"), text("o")),
              "pdftk ./PROMPT stamp w output o");
}

TEST(PdfCommands, runNothingThatANameSays) {
    const QTemporaryDir scratch;
    const QString here = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(scratch.path()));
    for (const char* name : {"%pipe%touch${IFS}ran", "%pipe%id>ran", "|touch ran", "@ran.args"})
        testsupport::run(
            text("/bin/sh"),
            {text("-c"), QString::fromUtf8(ps2pdf_command(text(name), text("o.pdf")))});
    testsupport::write_file(text("in.ps"), "%!PS\nshowpage\n");
    for (const char* name : {"a%d.pdf", "%stdout", "%pipe%touch ran"}) {
        const auto made = testsupport::run(
            text("/bin/sh"),
            {text("-c"), QString::fromUtf8(ps2pdf_command(text("in.ps"), text(name)))});
        EXPECT_EQ(made.status, 0) << made.err.toStdString();
        EXPECT_TRUE(QFile::exists(text(name))) << name;
    }
    EXPECT_FALSE(QFile::exists(text("ran")));
    QDir::setCurrent(here);
}
