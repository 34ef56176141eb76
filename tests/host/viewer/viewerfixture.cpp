#include "tests/host/viewer/viewerfixture.h"

#include "host/settings/settings.h"
#include "host/viewer/pagebox.h"
#include "host/viewer/progressdialog.h"
#include "host/viewer/windowwatch.h"
#include "tests/support/tools.h"
#include "tests/support/waiting.h"

#include <printman/toolkit/qscrollview.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QStatusBar>
#include <QTimer>

namespace {

constexpr int look_interval = 5; // milliseconds
const std::chrono::milliseconds usual_delay = host::WindowWatch::shown_after;

} // namespace

BoxReader::BoxReader() {
    qApp->installEventFilter(this);
}

bool BoxReader::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Show)
        return false;
    if (auto* box = qobject_cast<QMessageBox*>(watched)) {
        texts << box->text();
        if (QAbstractButton* yes = say_yes ? box->button(QMessageBox::Yes) : nullptr)
            QMetaObject::invokeMethod(yes, &QAbstractButton::click, Qt::QueuedConnection);
        else
            QMetaObject::invokeMethod(box, &QDialog::reject, Qt::QueuedConnection);
    } else if (auto* dialog = qobject_cast<host::ProgressDialog*>(watched)) {
        progress << dialog->findChild<QProgressBar*>()->text();
        const auto look = [this, dialog] {
            if (cancel_now_ && cancel_now_())
                dialog->reject();
        };
        QMetaObject::invokeMethod(dialog, look, Qt::QueuedConnection);
        auto* again = new QTimer(dialog);
        QObject::connect(again, &QTimer::timeout, dialog, look);
        again->start(look_interval);
    }
    return false;
}

void BoxReader::cancel_jobs(const std::function<bool()>& now) {
    host::WindowWatch::shown_after = {};
    cancel_now_ = now;
}

ViewerTest::ViewerTest() : report_(path("three.rpt")) {
    host::WindowWatch::shown_after = std::chrono::hours(1);
    answers_.leave<QMessageBox>().leave<host::ProgressDialog>();
    host::host_settings() = host::Settings(path("settings"));
    write("three.rpt", report(3));
}

ViewerTest::~ViewerTest() {
    host::WindowWatch::shown_after = usual_delay;
}

void ViewerTest::open(const QByteArray& report) {
    window_ = std::make_unique<host::ViewerWindow>(host::ViewerState(path("state")));
    const host::Outcome opened = window_->open(report.isEmpty() ? report_ : report);
    ASSERT_TRUE(opened.ok()) << opened.message.constData();
    window_->resize(700, 500);
    window_->show();
    ASSERT_TRUE(testsupport::wait_until_active(*window_));
    QCoreApplication::processEvents();
}

QByteArray ViewerTest::path(const QByteArray& name) const {
    return QFile::encodeName(directory_.path()) + '/' + name;
}

QByteArray ViewerTest::read(const QByteArray& name) const {
    return testsupport::read_file(QFile::decodeName(path(name)));
}

void ViewerTest::write(const QByteArray& name, const QByteArray& bytes) const {
    testsupport::write_file(QFile::decodeName(path(name)), bytes);
}

QStringList ViewerTest::files() const {
    return QDir(directory_.path()).entryList(QDir::Files | QDir::Hidden);
}

QByteArray ViewerTest::report(int pages, int columns, int lines) {
    QByteArray text;
    for (int page = 1; page <= pages; ++page) {
        const QByteArray number = QByteArray::number(page);
        text += "#!?PAGETOP " + QByteArray::number(columns) + ',' + QByteArray::number(lines) +
                "\npage " + number + "\n\n";
        for (int line = 2; line < lines; ++line)
            text += "word " + number + '\n';
        text += "#!?PAGEEND\n";
    }
    return text;
}

QAction& ViewerTest::action(const char* name) const {
    return *window_->findChild<QAction*>(QString::fromLatin1(name));
}

QWidget& ViewerTest::screen() const {
    return *window_->findChild<CScreen*>();
}

QString ViewerTest::page_box() const {
    return window_->findChild<host::PageBox*>()->text();
}

QString ViewerTest::status() const {
    QStringList texts;
    for (const QLabel* label : window_->statusBar()->findChildren<QLabel*>())
        texts << label->text();
    texts.removeAll(QString());
    return texts.join(QStringLiteral(" | "));
}

QScrollBar& ViewerTest::vertical() const {
    return *window_->findChild<QScrollView*>()->verticalScrollBar();
}
