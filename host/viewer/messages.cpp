#include "host/viewer/messages.h"

#include <QCoreApplication>
#include <QFile>
#include <QMainWindow>
#include <QMessageBox>
#include <QStatusBar>

namespace host {

namespace {

constexpr int short_time = 5000; // milliseconds
constexpr int long_time = 10000;

} // namespace

void Messages::report(const QString& effect, const Outcome& outcome) {
    if (outcome.ok())
        return;
    QMessageBox box(QMessageBox::Warning, QCoreApplication::applicationName(),
                    effect + QStringLiteral("\n\n") + QFile::decodeName(outcome.message),
                    QMessageBox::Ok, &window_);
    // A file's name or a tool's message is never markup.
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void Messages::show(const QString& text) {
    window_.statusBar()->showMessage(text, short_time);
}

void Messages::add(const QString& text) {
    const QString shown = window_.statusBar()->currentMessage();
    window_.statusBar()->showMessage(shown.isEmpty() ? text : shown + QStringLiteral(". ") + text,
                                     long_time);
}

void Messages::clear() {
    window_.statusBar()->clearMessage();
}

} // namespace host
