#pragma once

#include "host/viewer/reportview.h"
#include "host/viewer/viewerwindow.h"
#include "tests/host/program.h"
#include "tests/support/dialogs.h"

#include <printman/render/screen.h>

#include <QAction>
#include <QPointer>
#include <QScrollBar>
#include <QStringList>

#include <functional>
#include <memory>

/// Closes every message box that opens, as a click on its button does (on Yes where that is wanted,
/// and else where there are several, as Escape does), and keeps what it said; and
/// cancels the dialogs that show the progress of a job, when that is wanted.
class BoxReader : public QObject {
public:
    BoxReader();

    QStringList texts;    ///< of the message boxes, in the order in which they opened
    QStringList progress; ///< what the dialogs of jobs said when they opened
    bool say_yes = false;

    /// Shows jobs from their first page on, and cancels each as soon as @p now holds.
    void cancel_jobs(const std::function<bool()>& now = [] { return true; });

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<bool()> cancel_now_;
};

/// Tests of the viewer's window with a report of three pages of 80 x 30 in a directory of its own,
/// and settings in "settings" there, which is not made yet. No job is shown, however long it lasts.
class ViewerTest : public testing::Test {
protected:
    ViewerTest();
    ~ViewerTest() override;

    /// Opens that report, or another, in a window of 700 x 500 and waits until it is there.
    void open(const QByteArray& report = {});

    QByteArray path(const QByteArray& name) const;
    QByteArray read(const QByteArray& name) const;
    void write(const QByteArray& name, const QByteArray& bytes) const;
    QStringList files() const;

    /// A report whose page n says "page n" and "word n" in its lines.
    static QByteArray report(int pages, int columns = 80, int lines = 30);

    QAction& action(const char* name) const;
    QWidget& screen() const;
    QString page_box() const;
    QString status() const; ///< all texts of the status bar, with " | " between them
    QScrollBar& vertical() const;

    QTemporaryDir directory_;
    QByteArray report_;
    BoxReader boxes_;
    testsupport::DialogAnswers answers_; ///< to all other dialogs
    std::unique_ptr<host::ViewerWindow> window_;
};
