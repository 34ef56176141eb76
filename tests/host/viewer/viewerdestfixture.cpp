#include "tests/host/viewer/viewerdestfixture.h"

#include "host/printers/printerini.h"
#include "host/settings/settings.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTest>

DestinationTest::DestinationTest() : path_guard_("PATH", path("bin") + ":/usr/bin:/bin") {
    QDir(directory_.path()).mkdir(QStringLiteral("bin"));
    stub_lp("for last; do :; done\n"
            "if [ -f \"$last\" ]; then cat \"$last\"; else cat; fi > " +
            path("lp.ps"));
}

void DestinationTest::choose(const std::function<void(PrintDestDlg&)>& what,
                             const std::vector<testsupport::DialogAnswers::Answer>& in_others) {
    answers_.then_in<PrintDestDlg>(what);
    for (const auto& answer : in_others)
        answers_.then(answer);
    action("destination").trigger();
    EXPECT_TRUE(answers_.all_given());
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
