#include "tests/support/reportonscreen.h"

#include <QClipboard>
#include <QDir>
#include <QMimeData>
#include <QScopeGuard>

#include <csignal>
#include <sys/wait.h>
#include <vector>

using testsupport::read_file;
using testsupport::write_file;

namespace {

const QString table = QStringLiteral("<html><head><title></title></head><body><table>");
const QString table_end = QStringLiteral("</table></body></html>");

const QByteArray three_pages =
    "#!?PAGETOP 12,2\none\n#!?PAGEEND\n#!?PAGETOP\ntwo <b>\n%1\n#!?PAGEEND\n"
    "#!?PAGETOP\nthree\n#!?PAGEEND\n";

const QString three_tables =
    QStringLiteral("<html><head><title></title></head><body>"
                   "<table width=100%><tr><td>one</td></tr><tr></tr></table>"
                   "<table width=100%><tr><td>two <b></td></tr><tr><td>%1</td></tr></table>"
                   "<table width=100%><tr><td>three</td></tr><tr></tr></table></body></html>");

/// Two fields and a text on each of its lines.
QByteArray fields_report() {
    QByteArray report = "#!?PAGETOP 40,6\n";
    for (char line = '0'; line < '6'; ++line)
        report += QByteArray("    #!?L5,8,8;name_") + line + "      #!?L17,8,8;city_" + line + "\n";
    return report + "#!?PAGEEND\n";
}

class Clipboard : public ReportOnScreen {
protected:
    Clipboard() { clipboard()->setText(QStringLiteral("before")); }

    static QClipboard* clipboard() { return QApplication::clipboard(); }

    /// Adopts a report without showing it.
    void adopt(const QByteArray& report) {
        write_file(file(), report);
        ASSERT_EQ(manager_.init_printman(file().toLocal8Bit().constData()), 0);
    }

    /// Where on the screen widget a cell of the page is.
    QPoint cell(double column, double line) const {
        const QFontMetrics font(screen()->font());
        return {qRound(20 + column * font.maxWidth()), qRound(20 + line * font.height())};
    }
};

} // namespace

TEST_F(Clipboard, withoutAHighlightTheClipboardStays) {
    manager_.copy_text();
    show(fields_report());
    manager_.copy_text();
    manager_.save_to_clipboard();
    EXPECT_EQ(clipboard()->text(), QStringLiteral("before"));
}

TEST_F(Clipboard, aSelectionIsCopiedAsATable) {
    show(fields_report());
    manager_.mouse_press(cell(4.5, 3.2));
    manager_.mouse_release(cell(6.5, 4.6));
    const QString expected =
        table + QStringLiteral("<tr><td>name_3</td><td>city_3</td></tr><tr><td>nam</td></tr>") +
        table_end;
    manager_.copy_text();
    EXPECT_EQ(clipboard()->text(), expected);
    clipboard()->clear();
    manager_.save_to_clipboard();
    EXPECT_EQ(clipboard()->text(), expected);
}

TEST_F(Clipboard, whatIsCopiedIsPlainText) {
    show(fields_report());
    manager_.mouse_press(cell(0.5, 1.5));
    manager_.mouse_release(cell(30, 1.6));
    manager_.copy_text();
    EXPECT_TRUE(clipboard()->text().startsWith(u"<html>"));
    EXPECT_EQ(clipboard()->mimeData()->formats(), QStringList{QStringLiteral("text/plain")});
}

TEST_F(Clipboard, aPageIsAppendedToTheText) {
    adopt(three_pages);
    QString html = QStringLiteral("x");
    EXPECT_EQ(manager_.copy_page(html), QStringLiteral("x<table width=100%></table>"));
    ASSERT_EQ(manager_.get_rpt_page(1), 1);
    html.clear();
    const QString result = manager_.copy_page(html);
    EXPECT_EQ(result, QStringLiteral("<table width=100%><tr><td>one</td></tr><tr></tr></table>"));
    EXPECT_EQ(html, result);
}

TEST_F(Clipboard, allPagesAreOneDocumentAndTheLastStaysLoaded) {
    show(three_pages);
    const QImage before = image();
    manager_.save_allto_clipboard();
    EXPECT_EQ(clipboard()->text(), three_tables);
    EXPECT_EQ(manager_.get_cur_page(), 3);
    EXPECT_EQ(manager_.page_row(0).value(0).text, QStringLiteral("three"));
    EXPECT_EQ(image(), before);
    EXPECT_TRUE(manager_.last_job_ok());
    // The walk starts at the first page, wherever the report is open.
    manager_.save_allto_clipboard();
    EXPECT_EQ(clipboard()->text(), three_tables);
}

TEST_F(Clipboard, aReportWithoutPagesIsAnEmptyDocument) {
    const QString empty = QStringLiteral("<html><head><title></title></head><body></body></html>");
    manager_.save_allto_clipboard();
    EXPECT_EQ(clipboard()->text(), empty);
    clipboard()->clear();
    adopt("no report\n");
    manager_.save_allto_clipboard();
    EXPECT_EQ(clipboard()->text(), empty);
    EXPECT_TRUE(manager_.last_job_ok());
}

TEST_F(Clipboard, progressIsToldAndStops) {
    adopt(three_pages);
    std::vector<std::pair<int, int>> seen;
    manager_.set_progress([&](int done, int total) {
        seen.emplace_back(done, total);
        return done < 2;
    });
    manager_.save_allto_clipboard();
    EXPECT_EQ(seen, (std::vector<std::pair<int, int>>{{1, 3}, {2, 3}}));
    EXPECT_EQ(clipboard()->text(), QStringLiteral("before"));
    EXPECT_EQ(manager_.last_job_error(), QStringLiteral("canceled"));
    manager_.set_progress({});
    manager_.save_allto_clipboard();
    EXPECT_EQ(clipboard()->text(), three_tables);
    EXPECT_TRUE(manager_.last_job_ok());
}

TEST_F(Clipboard, aPageThatCannotBeReadEndsTheDocumentAndIsTold) {
    adopt(three_pages);
    manager_.set_progress([this](int done, int) {
        if (done == 2)
            write_file(file(), three_pages.left(three_pages.indexOf("two")));
        return true;
    });
    manager_.save_allto_clipboard();
    EXPECT_EQ(clipboard()->text().count(QStringLiteral("<table")), 2);
    EXPECT_TRUE(clipboard()->text().endsWith(u"</table></body></html>"));
    EXPECT_EQ(manager_.last_job_error(), QStringLiteral("cannot read page 3 of the report"));

    QFile::remove(file());
    manager_.set_progress({});
    manager_.save_allto_clipboard();
    EXPECT_EQ(clipboard()->text(),
              QStringLiteral("<html><head><title></title></head><body></body></html>"));
    EXPECT_EQ(manager_.last_job_error(), QStringLiteral("cannot read page 1 of the report"));
}

TEST_F(Clipboard, aProgressFunctionThatTurnsThePageEndsNothingInALoop) {
    adopt(three_pages);
    manager_.set_progress([this](int, int) { return manager_.get_rpt_page(1) == 1; });
    manager_.save_allto_clipboard();
    EXPECT_EQ(clipboard()->text().count(QStringLiteral("<table")), 3);
}

TEST_F(Clipboard, pasteGivesTheClipboardToTheBrowser) {
    const QByteArray bin = QFile::encodeName(scratch_.path());
    testsupport::write_script(scratch_.filePath(QStringLiteral("dlwbrw")),
                              "/bin/cat \"$1\" > " + bin + "/seen\n");
    const testsupport::EnvironmentGuard search("PATH", bin);
    const QString home = QDir::currentPath();
    struct sigaction old {};
    ::sigaction(SIGCHLD, nullptr, &old);
    const auto restore = qScopeGuard([&] {
        QDir::setCurrent(home);
        ::sigaction(SIGCHLD, &old, nullptr);
    });
    QDir::setCurrent(scratch_.path());

    clipboard()->setText(QString::fromLatin1("any text, caf\xe9"));
    manager_.paste_text();
    EXPECT_TRUE(manager_.last_job_ok());
    EXPECT_EQ(::waitpid(-1, nullptr, 0), -1);
    EXPECT_EQ(read_file(scratch_.filePath(QStringLiteral("seen"))), "any text, caf\xc3\xa9");

    QFile::remove(scratch_.filePath(QStringLiteral("seen")));
    clipboard()->clear();
    manager_.paste_text();
    EXPECT_FALSE(manager_.last_job_ok());
    EXPECT_EQ(::waitpid(-1, nullptr, 0), -1);
    EXPECT_FALSE(QFile::exists(scratch_.filePath(QStringLiteral("seen"))));
}
