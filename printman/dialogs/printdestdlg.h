#pragma once

#include <printman/printdest.h>
#include <printman/printman_export.h>
#include <printman/toolkit/formdialog.h>

#include <QFont>
#include <QString>

#include <memory>

class CPrintMan;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;
namespace Ui {
class printdestDlgBase;
}

/// The widgets of the print destination dialog, without behaviour.
class PRINTMAN_EXPORT printdestDlgBase : public printman::FormDialog {
    Q_OBJECT

public:
    /// @param name the object's name; null or empty for "printdestDlgBase"
    explicit printdestDlgBase(QWidget* parent = nullptr, const char* name = nullptr,
                              bool modal = false, Qt::WindowFlags flags = {});
    ~printdestDlgBase() override;

    QGroupBox* bgbExecDest;
    QRadioButton* opToScreen;
    QRadioButton* opToPrinter;
    QRadioButton* opToFile;
    QLabel* PixmapLabel1; ///< shows the image "korvologo.png"

    QGroupBox* bgbPrint;
    QRadioButton* opLocalPrint;
    QRadioButton* opServerPrint;
    QLabel* lbPrintID;
    QLineEdit* txtPrintID;
    QPushButton* btnPIDBrw;
    QLabel* lbNCopies;
    QSpinBox* spNCopies;
    QCheckBox* chkCollate;
    QCheckBox* chkPageLength;
    QCheckBox* chkSelPrtFnt;
    QCheckBox* chkNoPageFmt;

    QGroupBox* gbFile;
    QLabel* lbSaveAs;
    QLineEdit* txtPathName;
    QPushButton* btnFileBrw;

    QGroupBox* gbScreen;
    QLabel* lbFont;
    QLineEdit* txtFont;
    QPushButton* btnFontBrw;

    QPushButton* btnOK;
    QPushButton* btnCancel;

public slots:
    void languageChange() override;

protected:
    void fit_to_font() override;

private:
    std::unique_ptr<Ui::printdestDlgBase> ui_;
};

/// The dialog in which the user says where a report goes: screen, printer or file. It edits a copy
/// of the record, which OK writes and Cancel leaves, but for `server_print`, which follows its two
/// buttons at once, and `no_page_fmt`, which init_dialog() may set. It is as small as its layout
/// allows and cannot be enlarged.
///
/// Opening it reads the screen font and NOPAGEMAP from the host; the setup file is read when a
/// button of the printer's is clicked.
class PRINTMAN_EXPORT PrintDestDlg : public printdestDlgBase {
    Q_OBJECT

public:
    /// To the screen, on a server's printer, one copy, collated; the record is all zero.
    explicit PrintDestDlg(QWidget* parent = nullptr, const char* name = nullptr, bool modal = false,
                          Qt::WindowFlags flags = {});
    ~PrintDestDlg() override;

    PrintDest dest{};
    QString server_printer_id; ///< set by init_dialog() from the record
    QString local_printer_id;  ///< of this station's printer; the caller sets it
    QFont screen_font;         ///< what the Font field tells of

    /// Whose printers are offered. The caller sets it and keeps it for as long as the dialog is
    /// open; without one no printer has a page length, and no list has a printer.
    CPrintMan* printman = nullptr;

    /// Copies the whole record in; the widgets show it from the next show on.
    void set_print_dest(const PrintDest& record);

    /// Loads the widgets from the record, as the first show does and every one after a hide. Which
    /// groups are enabled stays. A number of copies outside 1 to 99 becomes the nearest inside.
    void init_dialog();

    /// Stores what belongs to the destination chosen in the record; all else in it stays. A printer
    /// id that is longer than 130 bytes is cut, and so is a path of more than 268.
    void rtn_dialog();

    /// Takes the screen font from the host's settings; a property without a setting stays, and
    /// without a face name all of them.
    void load_screenfont();

    /// The screen font in words: family, weight and slant, size.
    QString get_screenfont_string() const;

    // These enable or disable a group with all that is in it.
    void enable_screen(bool enable);
    void enable_print(bool enable);
    void enable_file(bool enable);

public slots:
    /// Stores the choices in the record and accepts.
    void btnOK_clicked();

    /// Rejects.
    void btnCancel_clicked();

    void opToScreen_clicked();
    void opToPrinter_clicked();
    void opToFile_clicked();
    void opLocalPrint_clicked();
    void opServerPrint_clicked();

    /// Does nothing.
    void txtPrintID_textChanged(const QString&);

    /// Lets the user choose a printer; when that is canceled, nothing changes.
    void btnPIDBrw_clicked();

    /// Does nothing.
    void txtPathName_textChanged(const QString&);

    /// Lets the user choose a file, which gets the extension of the filter chosen. A path that does
    /// not fit the record is refused: the field stays, and the desktop's bell is rung.
    void btnFileBrw_clicked();

    /// Does nothing.
    void txtFont_textChanged(const QString&);

    /// Lets the user choose the screen font; when that is canceled, it becomes the default font,
    /// and the Font field stays.
    void btnFontBrw_clicked();

    /// Has the host store the setting NOPAGEMAP at once.
    void chkNoPageFmt_clicked();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void make_connections();
    void limit_texts();
    void load_printer();
    void offer_local_options();
    void offer_server_options();
    void store_printer();
    void store_path();
    int screen_weight() const;
    void set_screen_font(const QFont& font, int weight);
    void show_screen_font();
    void focus_destination();

    bool needs_init_ = true;
    bool has_local_id_ = false; ///< the record was once for local printing
    // The number that the screen font's weight was read as: the toolkit keeps only the nearest of
    // its own weights.
    QFont weighed_font_;
    int weight_;
};
