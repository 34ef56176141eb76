#include "tests/dialogs/destfixture.h"

#include <QCheckBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <algorithm>
#include <map>

using testsupport::text;

namespace {

constexpr int to_screen = 1;
constexpr int to_printer = 2;
constexpr int to_file = 3;

/// A record whose bytes are all @p byte: its texts have no end.
PrintDest filled(int byte) {
    PrintDest made;
    std::memset(&made, byte, sizeof made);
    return made;
}

/// What was copied in with its terminator; the bytes behind it stay.
template <size_t N>
void copy_text(char (&field)[N], const std::string& text) {
    ASSERT_LT(text.size(), N);
    std::copy_n(text.c_str(), text.size() + 1, field);
}

template <size_t N>
std::string first_bytes(const char (&field)[N]) {
    return {field, strnlen(field, N - 1)};
}

class PrintDestRecord : public PrintDestFixture {
protected:
    /// Records as a host may hand them over, the bytes behind the last member set, too.
    static std::map<std::string, PrintDest> starts() {
        PrintDest odd = record(to_file, true);
        odd.server_print = 2;
        odd.collate = 0x80;
        odd.no_page_fmt = 0xFF;
        odd.copies = 100;
        PrintDest full = record(to_printer, false);
        set_text(full.prt_id, std::string(130, 'p'));
        set_text(full.path, '/' + std::string(267, 'q'));
        std::memset(reinterpret_cast<char*>(&full) + 413, 0x5A, 3);
        PrintDest most = filled('x');
        most.copies = INT32_MAX;
        return {{"zero", record(0, false)},
                {"server", record(to_screen, true)},
                {"local", record(to_file, false)},
                {"odd", odd},
                {"full", full},
                {"ones", filled(0xFF)},
                {"unterminated", most}};
    }

    static QRadioButton* button(const PrintDestDlg& dialog, int dest) {
        return dest == to_screen ? dialog.opToScreen
                                 : (dest == to_printer ? dialog.opToPrinter : dialog.opToFile);
    }

    /// What @p start becomes when @p dest is clicked and confirmed.
    static PrintDest confirmed(const PrintDest& start, int dest) {
        PrintDest expected;
        std::memcpy(&expected, &start, sizeof expected);
        expected.dest = dest;
        if (dest == to_printer) {
            const bool on_server = start.server_print != 0;
            const std::string id = on_server ? first_bytes(start.prt_id) : "LOCAL1";
            expected.server_print = on_server;
            copy_text(expected.prt_id, id);
            expected.copies = std::clamp(start.copies, 1, 99);
            expected.collate = start.collate != 0;
            expected.page_length = id == "SERVER1" || id == "LOCAL1";
            expected.sel_prt_font = 0;
            expected.no_page_fmt = start.no_page_fmt != 0;
        }
        if (dest == to_file)
            copy_text(expected.path, first_bytes(start.path));
        return expected;
    }
};

} // namespace

TEST_F(PrintDestRecord, okStoresWhatBelongsToTheDestinationAndNothingElse) {
    for (const auto& [name, start] : starts()) {
        for (const int dest : {to_screen, to_printer, to_file}) {
            PrintDestDlg dialog;
            open(dialog, start);
            click(button(dialog, dest));
            click(dialog.btnOK);
            EXPECT_EQ(dialog.result(), QDialog::Accepted);
            EXPECT_EQ(bytes_of(dialog.dest), bytes_of(confirmed(start, dest)))
                << name << " to " << dest;
        }
    }
}

TEST_F(PrintDestRecord, cancelLeavesIt) {
    for (const auto& [name, start] : starts()) {
        for (const int dest : {to_screen, to_printer, to_file}) {
            PrintDestDlg dialog;
            open(dialog, start);
            click(button(dialog, dest));
            enter(dialog.txtPrintID, text("typed"));
            enter(dialog.txtPathName, text("/tmp/typed"));
            click(dialog.btnCancel);
            EXPECT_EQ(dialog.result(), QDialog::Rejected);
            EXPECT_EQ(bytes_of(dialog.dest), bytes_of(start)) << name << " to " << dest;
        }
    }
}

TEST_F(PrintDestRecord, okWithoutAClickStoresTheDestinationThatIsShown) {
    for (const auto& [name, start] : starts()) {
        PrintDestDlg dialog;
        open(dialog, start);
        click(dialog.btnOK);
        const bool is_known = start.dest >= 1 && start.dest <= 3;
        PrintDest expected = confirmed(start, is_known ? start.dest : to_screen);
        // Its length is looked up when a printer's button is clicked.
        if (expected.dest == to_printer)
            expected.page_length = start.page_length != 0;
        EXPECT_EQ(bytes_of(dialog.dest), bytes_of(expected)) << name;
    }
}

TEST_F(PrintDestRecord, holdsWhatWasEnteredForAPrinter) {
    PrintDestDlg dialog;
    open(dialog, record(to_screen, true));
    click(dialog.opToPrinter);
    click(dialog.opLocalPrint);
    enter(dialog.txtPrintID, QString::fromUtf8("B\xC3\xBCro 7"));
    enter(dialog.spNCopies, text("42"));
    click(dialog.chkCollate);
    click(dialog.chkPageLength);
    click(dialog.chkSelPrtFnt);
    click(dialog.chkNoPageFmt);
    click(dialog.btnOK);
    PrintDest expected = record(to_screen, true);
    expected.dest = to_printer;
    expected.server_print = 0;
    // In Latin-1, with the rest of the id before behind it.
    copy_text(expected.prt_id, "B\xFCro 7");
    expected.copies = 42;
    expected.collate = 0;
    expected.page_length = 0;
    expected.sel_prt_font = 1;
    expected.no_page_fmt = 1;
    EXPECT_EQ(bytes_of(dialog.dest), bytes_of(expected));
}

TEST_F(PrintDestRecord, emptyFieldsAreEmptyTexts) {
    for (const int dest : {to_printer, to_file}) {
        PrintDestDlg dialog;
        open(dialog, record(to_screen, true));
        click(button(dialog, dest));
        enter(dest == to_printer ? dialog.txtPrintID : dialog.txtPathName, {});
        click(dialog.btnOK);
        EXPECT_STREQ(dialog.dest.prt_id, dest == to_printer ? "" : "SERVER1");
        EXPECT_STREQ(dialog.dest.path, dest == to_file ? "" : "/tmp/before.txt");
    }
}

TEST_F(PrintDestRecord, pageFormattingThatASettingTurnsOffIsStored) {
    testhost::set("NOPAGEMAP", "Yes");
    PrintDestDlg dialog;
    open(dialog, record(to_printer, true));
    click(dialog.btnOK);
    EXPECT_EQ(dialog.dest.no_page_fmt, 1);
}

TEST_F(PrintDestRecord, aTooLongPrinterIdIsCutToItsField) {
    PrintDestDlg dialog;
    open(dialog, record(to_printer, true));
    click(dialog.opToPrinter);
    enter(dialog.txtPrintID, QString(200, u'i'));
    EXPECT_EQ(dialog.txtPrintID->text().size(), 130);
    click(dialog.btnOK);
    EXPECT_EQ(std::string(dialog.dest.prt_id, 131), std::string(130, 'i') + '\0');
    EXPECT_EQ(dialog.dest.copies, 3);
}

TEST_F(PrintDestRecord, aTooLongLocalPrinterIdIsCutToItsField) {
    PrintDestDlg dialog;
    open(dialog, record(to_printer, false));
    dialog.local_printer_id = QString(500, u'i');
    click(dialog.opToPrinter);
    click(dialog.opLocalPrint);
    click(dialog.btnOK);
    EXPECT_EQ(std::string(dialog.dest.prt_id, 131), std::string(130, 'i') + '\0');
    EXPECT_EQ(dialog.dest.copies, 3);
}

TEST_F(PrintDestRecord, aPathTakesNoMoreThanItsField) {
    PrintDestDlg dialog;
    open(dialog, record(to_file, true));
    click(dialog.opToFile);
    enter(dialog.txtPathName, QString(300, u'q'));
    EXPECT_EQ(dialog.txtPathName->text().size(), 268);
    click(dialog.btnOK);
    EXPECT_EQ(std::string(dialog.dest.path, 269), std::string(268, 'q') + '\0');
    EXPECT_EQ(dialog.dest.no_page_fmt, 0);
}

TEST_F(PrintDestRecord, aPathOfLongCharactersTakesNoMoreEither) {
    PrintDestDlg dialog;
    open(dialog, record(to_file, true));
    click(dialog.opToFile);
    enter(dialog.txtPathName, QString(200, QChar(0xE9)));
    EXPECT_EQ(dialog.txtPathName->text().size(), 134);
    // A text that the program sets is not refused.
    dialog.txtPathName->setText(u'/' + QString(200, QChar(0xE9)));
    click(dialog.btnOK);
    EXPECT_EQ(std::string(dialog.dest.path),
              QFile::encodeName(u'/' + QString(133, QChar(0xE9))).toStdString());
    EXPECT_EQ(dialog.dest.no_page_fmt, 0);
}

TEST_F(PrintDestRecord, enterAcceptsAPathThatIsNoText) {
    PrintDest dest = record(to_file, true);
    set_text(dest.path, "/tmp/" + std::string(200, '\xE9'));
    PrintDestDlg dialog;
    open(dialog, dest);
    click(dialog.opToFile);
    QTest::keyClick(dialog.txtPathName, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(bytes_of(dialog.dest), bytes_of(dest));
}

TEST_F(PrintDestRecord, aPathIsInTheEncodingOfFileNames) {
    PrintDestDlg dialog;
    PrintDest dest = record(to_file, true);
    set_text(dest.path, "/tmp/Br\xC3\xBC"
                        "cke");
    open(dialog, dest);
    EXPECT_EQ(dialog.txtPathName->text(), QString::fromUtf8("/tmp/Br\xC3\xBC"
                                                            "cke"));
    click(dialog.opToFile);
    type(dialog.txtPathName, QString(QChar(0x20AC)));
    click(dialog.btnOK);
    EXPECT_STREQ(dialog.dest.path, "/tmp/Br\xC3\xBC"
                                   "cke\xE2\x82\xAC");
}
