#include "tests/host/viewer/viewerdestfixture.h"

#include "host/printers/printerini.h"
#include "host/settings/settings.h"
#include "host/viewer/progressdialog.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTest>

#include <algorithm>

DestinationUser::DestinationUser() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
    timer_.start(10);
}

void DestinationUser::look() {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible() || qobject_cast<QMessageBox*>(dialog) ||
        qobject_cast<host::ProgressDialog*>(dialog) ||
        std::ranges::find(answered_, dialog) != answered_.end())
        return;
    answered_.emplace_back(dialog);
    // Not within this timer's event: the answer may open another dialog, which is to be seen too.
    QTimer::singleShot(0, dialog, [this, dialog] {
        auto* const destination = qobject_cast<PrintDestDlg*>(dialog);
        opened += destination ? 1 : 0;
        if (destination && in_dialog)
            in_dialog(*destination);
        else if (!destination && in_others)
            in_others(*dialog);
        else
            dialog->reject();
    });
}

DestinationTest::DestinationTest() : path_guard_("PATH", path("bin") + ":/usr/bin:/bin") {
    QDir(directory_.path()).mkdir(QStringLiteral("bin"));
    stub_lp("for last; do :; done\n"
            "if [ -f \"$last\" ]; then cat \"$last\"; else cat; fi > " +
            path("lp.ps"));
}

void DestinationTest::choose(const std::function<void(PrintDestDlg&)>& what) {
    const int before = user_.opened;
    user_.in_dialog = what;
    action("destination").trigger();
    EXPECT_EQ(user_.opened, before + 1);
}

void DestinationTest::write_settings(const QByteArray& name, const QByteArray& bytes) const {
    QDir(directory_.path()).mkdir(QStringLiteral("settings"));
    write("settings/" + name, bytes);
}

void DestinationTest::lose_settings() {
    write("occupied", "a file");
    host::host_settings() = host::Settings(path("occupied/settings"));
}

void DestinationTest::write_setup_file(const QByteArray& description) const {
    std::vector<printman::SetupRecord> records;
    const host::Outcome read = host::read_printers(description, "printers", records);
    ASSERT_TRUE(read.ok()) << read.message.constData();
    write_settings("PRTSETUP.BIN", QByteArray::fromStdString(printman::setup_file_bytes(records)));
}

void DestinationTest::stub_lp(const QByteArray& body) const {
    testsupport::write_script(QFile::decodeName(path("bin/lp")),
                              "echo \"$@\" >> " + path("lp.arguments") + '\n' + body + '\n');
}

QStringList DestinationTest::spooled_words() const {
    return testsupport::pdf_words(testsupport::make_pdf(QFile::decodeName(path("lp.ps"))));
}

QString DestinationTest::message() const {
    return window_->statusBar()->currentMessage();
}

void click(QAbstractButton* button) {
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
}

void type(QLineEdit* field, const QByteArray& text) {
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, QFile::decodeName(text));
}

void pick(QComboBox* box, const QByteArray& text) {
    const int index = box->findText(QString::fromLatin1(text));
    ASSERT_GE(index, 0) << text.constData();
    QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
    QAbstractItemView* const list = box->view();
    ASSERT_TRUE(list->isVisible());
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
}
