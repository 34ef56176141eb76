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

/// The dialog in which the user chooses where a report goes: screen, printer or file. It edits a
/// copy of the record: OK writes the choices to it, Cancel leaves it unchanged, except for
/// `server_print`, which follows its two buttons at once, and `no_page_fmt`, which init_dialog()
/// may set. The dialog is as small as its layout allows and cannot be enlarged.
///
/// Opening it reads the screen font and NOPAGEMAP from the host; the setup file is read when one of
/// the printer's buttons is clicked.
class PRINTMAN_EXPORT PrintDestDlg : public printdestDlgBase {
    Q_OBJECT

public:
    /// Starts with the screen, a server's printer, one copy, collated; the record is all zero.
    explicit PrintDestDlg(QWidget* parent = nullptr, const char* name = nullptr, bool modal = false,
                          Qt::WindowFlags flags = {});
    ~PrintDestDlg() override;

    PrintDest dest{};
    QString server_printer_id; ///< set by init_dialog() from the record
    QString local_printer_id;  ///< this workstation's printer; set by the caller
    QFont screen_font;         ///< the font that the Font field names

    /// The manager whose printers are offered. The caller sets it and keeps it alive while the
    /// dialog is open; without one the lists are empty and no printer has a page length.
    CPrintMan* printman = nullptr;

    /// Copies the whole record; the widgets show it the next time the dialog is shown.
    void set_print_dest(const PrintDest& record);

    /// Loads the widgets from the record, as happens when the dialog is shown first and after it
    /// was hidden. Groups stay enabled or disabled. The number of copies is clamped to 1 to 99.
    void init_dialog();

    /// Stores the chosen destination and what belongs to it in the record; all else in it stays. A
    /// printer id of more than 130 bytes is truncated, and so is a path of more than 268.
    void rtn_dialog();

    /// Takes the screen font from the host's settings. A property without a setting stays as it is;
    /// without a face name all of them do.
    void load_screenfont();

    /// The screen font in words: family, weight and slant, size.
    QString get_screenfont_string() const;

    // These enable or disable a group and everything in it.
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

    /// Lets the user choose a printer; nothing changes when that is canceled.
    void btnPIDBrw_clicked();

    /// Does nothing.
    void txtPathName_textChanged(const QString&);

    /// Lets the user choose a file, which gets the extension of the chosen filter. A path that does
    /// not fit into the record is refused with a beep, and the field stays.
    void btnFileBrw_clicked();

    /// Does nothing.
    void txtFont_textChanged(const QString&);

    /// Lets the user choose the screen font; when that is canceled, it becomes the default font,
    /// and the Font field stays.
    void btnFontBrw_clicked();

    /// Has the host store the setting NOPAGEMAP immediately.
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
    // The weight of the screen font as it was read: a QFont keeps only the nearest of its own
    // weights.
    QFont weighed_font_;
    int weight_;
};
