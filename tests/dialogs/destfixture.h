#pragma once

#include "tests/printer/setuprecords.h"
#include "tests/support/testhost.h"
#include "tests/support/tools.h"

#include <printman/dialogs/printdestdlg.h>
#include <printman/printman.h>

#include <QAbstractButton>
#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

/// A host with two local printers, of which "LOCAL1" is this station's, and two server printers;
/// the first of each has a default page length.
class PrintDestFixture : public testing::Test {
protected:
    PrintDestFixture() {
        testhost::reset();
        testhost::set("PRTINI", scratch_.path().toLocal8Bit());
        testhost::set("STATION7", "LOCAL1");
        set_text(manager_.prt_key, "STATION7");
        printman::SetupRecord without_length = setup_record("LOCAL2");
        without_length.page = {};
        testsupport::write_file(
            scratch_.filePath(QStringLiteral("PRTSETUP.BIN")),
            QByteArray::fromStdString(setup_bytes({setup_record("LOCAL1"), without_length})));
        manager_.set_numwin_printer(2);
        manager_.add_win_printer(&server_printer("SERVER1", 60));
        manager_.add_win_printer(&server_printer("SERVER2", 0));
    }
    ~PrintDestFixture() override { testhost::reset(); }

    /// A record as the host would fill it; @p dest 0 makes an all-zero one.
    static PrintDest record(int dest, bool on_server) {
        PrintDest made{};
        if (dest == 0)
            return made;
        made.dest = dest;
        made.server_print = on_server;
        set_text(made.prt_id, on_server ? "SERVER1" : "LOCAL2");
        made.copies = 3;
        made.collate = 1;
        made.page_length = 1;
        made.sel_prt_font = 1;
        set_text(made.path, "/tmp/before.txt");
        return made;
    }

    /// Hands the dialog what a manager would, and shows it.
    void open(PrintDestDlg& dialog, const PrintDest& record) {
        dialog.printman = &manager_;
        dialog.local_printer_id = testsupport::text("LOCAL1");
        dialog.set_print_dest(record);
        dialog.show();
    }

    /// At the left end, where radio buttons and check boxes take it.
    static void click(QAbstractButton* button) {
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
    }

    /// Types any characters, also those that are on no keyboard.
    static void type(QWidget* field, const QString& what) {
        for (const QChar character : what)
            QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString(character), {});
    }

    /// What stood in the field is replaced.
    static void enter(QWidget* field, const QString& what) {
        QTest::keySequence(field, QKeySequence::SelectAll);
        QTest::keyClick(field, Qt::Key_Delete);
        type(field, what);
    }

    /// The calls that store settings.
    static QStringList stored() { return testhost::calls().filter(testsupport::text("SetEnv")); }

    QTemporaryDir scratch_;
    CPrintMan manager_;

private:
    WinPrtSetup printer_{};

    const WinPrtSetup& server_printer(const char* id, int page_length) {
        printer_ = {};
        set_text(printer_.printer_id, id);
        printer_.page_length = page_length;
        return printer_;
    }
};
