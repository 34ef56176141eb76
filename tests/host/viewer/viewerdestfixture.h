#pragma once

#include "tests/host/viewer/viewerfixture.h"
#include "tests/support/tools.h"

#include <printman/dialogs/printdestdlg.h>

#include <functional>
#include <vector>

class QAbstractButton;
class QComboBox;
class QLineEdit;

/// Tests of the window with the library's destination dialog. A stub of lp keeps its arguments in
/// "lp.arguments" and the file that it gets, or its standard input, in "lp.ps"; there is no other
/// spooler, and the station's name is "here".
class DestinationTest : public ViewerTest {
protected:
    DestinationTest();

    /// Opens the dialog with the menu's action, does that in it and in those that it opens, and
    /// waits for what follows.
    void choose(const std::function<void(PrintDestDlg&)>& what,
                const std::vector<testsupport::DialogAnswers::Answer>& in_others = {});

    /// Writes a file of the settings directory.
    void write_settings(const QByteArray& name, const QByteArray& bytes) const;
    QByteArray menu_settings() const { return read("settings/dlwmenu.ini"); }

    /// Makes the settings directory one that cannot be written, nor be made.
    void lose_settings();

    /// A printer setup file of these printers, each with a section, and nothing else.
    void write_setup_file(const QByteArray& description) const;

    void stub_lp(const QByteArray& body) const;

    /// The words that lp was given to print.
    QStringList spooled_words() const;

    QString message() const;

    testsupport::EnvironmentGuard station_{"STATION", "here"};
    testsupport::EnvironmentGuard no_printer_dir_{"PRTINI", ""};
    testsupport::EnvironmentGuard no_page_map_{"NOPAGEMAP", ""};
    testsupport::EnvironmentGuard path_guard_;
};

// What a user does in the dialog.
void click(QAbstractButton* button);
void type(QLineEdit* field, const QByteArray& text);

/// Opens the list of a shown box with the keyboard and takes the entry of that text.
void pick(QComboBox* box, const QByteArray& text);
