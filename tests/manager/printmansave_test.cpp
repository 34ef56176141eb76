#include "tests/manager/printmanfixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QMetaObject>
#include <QWidget>

using testsupport::read_file;
using testsupport::write_file;

TEST_F(PrintMan, savingTwiceWritesEveryPageTwice) {
    manager_.init_printman();
    manager_.add_rpt_page(three_pages.constData(), static_cast<int>(three_pages.size()));
    EXPECT_EQ(manager_.save_rpt_file(nullptr, path("1").constData()), 1);
    EXPECT_EQ(manager_.save_rpt_file(nullptr, path("2").constData()), 1);
    const QByteArray once = "one\n\ntwo\n\nthree\n\n";
    EXPECT_EQ(read_file(QString::fromLocal8Bit(path("1"))), once);
    EXPECT_EQ(read_file(QString::fromLocal8Bit(path("2"))), once + once);
}

TEST_F(PrintMan, writingTheTextDoesNotIndexAgain) {
    adopt(three_pages);
    EXPECT_EQ(manager_.write_rpt_text(path("1").constData()), 1);
    EXPECT_EQ(manager_.write_rpt_text(path("2").constData()), 1);
    EXPECT_EQ(read_file(QString::fromLocal8Bit(path("2"))), "one\n\ntwo\n\nthree\n\n");
    EXPECT_EQ(manager_.get_page_count(), 3);
    EXPECT_TRUE(manager_.last_job_ok());
}

TEST_F(PrintMan, aReportWithoutGeometrySavesAsAnEmptyFile) {
    adopt("no report at all\n");
    EXPECT_EQ(manager_.save_rpt_file(nullptr, path("1").constData()), 1);
    EXPECT_TRUE(files().contains(QStringLiteral("1")));
    EXPECT_EQ(read_file(QString::fromLocal8Bit(path("1"))), "");
    EXPECT_EQ(manager_.write_rpt_text(path("2").constData()), 0);
    EXPECT_FALSE(files().contains(QStringLiteral("2")));
    EXPECT_FALSE(manager_.last_job_error().isEmpty());
}

TEST_F(PrintMan, aFileThatCannotBeOpenedIsShownAndIndexesNothing) {
    adopt(three_pages);
    const QByteArray nowhere = path("no/such/dir.txt");
    EXPECT_EQ(manager_.save_rpt_file(nullptr, nowhere.constData()), 0);
    EXPECT_EQ(manager_.save_rpt_file(nullptr, nullptr), 0);
    EXPECT_EQ(manager_.save_rpt_file(nullptr, ""), 0);
    EXPECT_EQ(manager_.get_page_count(), 3);
    EXPECT_FALSE(manager_.last_job_ok());

    QWidget parent;
    QString title, text, button;
    QMetaObject::invokeMethod(
        &parent,
        [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            title = box->windowTitle();
            text = box->text();
            button = box->buttons().value(0)->text();
            EXPECT_EQ(box->buttons().size(), 1);
            EXPECT_EQ(box->icon(), QMessageBox::Warning);
            box->buttons().value(0)->click();
        },
        Qt::QueuedConnection);
    EXPECT_EQ(manager_.save_rpt_file(&parent, nowhere.constData()), 0);
    EXPECT_EQ(title, QStringLiteral("File Open Error"));
    EXPECT_EQ(text, QStringLiteral("Can not open file: ") + QString::fromLocal8Bit(nowhere));
    EXPECT_EQ(button, QStringLiteral("Ok"));
}

TEST_F(PrintMan, aNameThatWouldBecomeAnotherIsRefused) {
    adopt(three_pages);
    for (const char* name : {"r\xe9port.txt", "r\xe8port.txt"}) {
        const QByteArray file = scratch_.path().toLocal8Bit() + '/' + name;
        EXPECT_EQ(manager_.save_rpt_file(nullptr, file.constData()), 0);
        EXPECT_EQ(manager_.write_rpt_text(file.constData()), 0);
    }
    EXPECT_EQ(files(), QStringList{QStringLiteral("r.rpt")});
    EXPECT_EQ(
        manager_.write_rpt_text((scratch_.path().toLocal8Bit() + "/r\xc3\xa9port.txt").constData()),
        1);
}

TEST_F(PrintMan, savingShowsTheWaitCursorAndThenTheArrow) {
    adopt(three_pages);
    QWidget parent;
    Qt::CursorShape during = Qt::ArrowCursor;
    manager_.set_progress([&](int, int) {
        during = parent.cursor().shape();
        return true;
    });
    EXPECT_EQ(manager_.save_rpt_file(&parent, path("1").constData()), 1);
    EXPECT_EQ(during, Qt::WaitCursor);
    EXPECT_EQ(parent.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(PrintMan, progressIsToldAndStops) {
    adopt(three_pages);
    write_file(QString::fromLocal8Bit(path("1")), "earlier");
    std::vector<std::pair<int, int>> seen;
    manager_.set_progress([&](int done, int total) {
        seen.emplace_back(done, total);
        return done < 2;
    });
    EXPECT_EQ(manager_.write_rpt_text(path("1").constData()), 0);
    EXPECT_EQ(seen, (std::vector<std::pair<int, int>>{{1, 3}, {2, 3}}));
    EXPECT_EQ(read_file(QString::fromLocal8Bit(path("1"))), "earlier");
}

TEST_F(PrintMan, aSaveThatWasStoppedShowsNoWarning) {
    adopt(three_pages);
    manager_.set_progress([](int, int) { return false; });
    QWidget parent;
    bool shown = false;
    QMetaObject::invokeMethod(
        &parent,
        [&] {
            if (QWidget* box = QApplication::activeModalWidget()) {
                shown = true;
                box->close();
            }
        },
        Qt::QueuedConnection);
    EXPECT_EQ(manager_.save_rpt_file(&parent, path("1").constData()), 0);
    QApplication::processEvents();
    EXPECT_FALSE(shown);
    EXPECT_EQ(files(), QStringList{QStringLiteral("r.rpt")});
}

TEST_F(PrintMan, aPageThatCannotBeAddedIsTold) {
    testhost::set("TMPDIR", "/no/such/directory");
    manager_.init_printman();
    manager_.add_rpt_page("x", 1);
    EXPECT_FALSE(manager_.last_job_ok());
    testhost::set("TMPDIR", scratch_.path().toLocal8Bit());
    manager_.init_printman();
    manager_.add_rpt_page("x", 1);
    EXPECT_TRUE(manager_.last_job_ok());
}
