#pragma once

#include <printman/printer/prtsetup.h>
#include <printman/printman_export.h>
#include <printman/toolkit/formdialog.h>

#include <QString>

#include <memory>

class CPrintMan;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
namespace Ui {
class selPrinterDlgBase;
}

/// The widgets of the dialog that shows a host-defined or local printer, without behaviour. All
/// fields whose names begin with "txt" are read-only.
class PRINTMAN_EXPORT selPrinterDlgBase : public printman::FormDialog {
    Q_OBJECT

public:
    /// @param name the object's name; null or empty for "selPrinterDlgBase"
    explicit selPrinterDlgBase(QWidget* parent = nullptr, const char* name = nullptr,
                               bool modal = false, Qt::WindowFlags flags = {});
    ~selPrinterDlgBase() override;

    QLabel* lbPrinterID;
    QComboBox* cbPrinterID; ///< the printer ids to choose from
    QGroupBox* gbPrinter;
    QLabel* lbPrinterName;
    QLineEdit* txtPrinterName;
    QLabel* lbPaperSize;
    QLineEdit* txtPaperSize;
    QLabel* lbOrientation;
    QLineEdit* txtOrientation;
    QPushButton* btnOK;
    QPushButton* btnCancel;
    QGroupBox* gbFont;
    QLabel* lbFontName;
    QLineEdit* txtFontName;
    QLabel* lbStype; ///< labels txtStyle
    QLineEdit* txtStyle;
    QLabel* lbSize;
    QLineEdit* txtSize;
    QGroupBox* gbDefPageLength;
    QLabel* lbPageLength;
    QLineEdit* txtPageLength;
    QLabel* lbFirstLine;
    QLineEdit* txtFirstLine;
    QLabel* lbLastLine;
    QLineEdit* txtLastLine;
    QGroupBox* gbPageMargins;
    QLabel* lbTop;
    QLineEdit* txtTop;
    QLabel* TextLabel1; ///< the unit after txtTop
    QLabel* lbBottom;
    QLineEdit* txtBottom;
    QLabel* TextLabel1_2; ///< the unit after txtBottom
    QLabel* lbLeft;
    QLineEdit* txtLeft;
    QLabel* TextLabel1_3; ///< the unit after txtLeft
    QLabel* lbRight;
    QLineEdit* txtRight;
    QLabel* TextLabel1_4; ///< the unit after txtRight

public slots:
    void languageChange() override;

protected:
    void fit_to_font() override;

private:
    void take_widgets();

    std::unique_ptr<Ui::selPrinterDlgBase> ui_;
};

/// The dialog in which the user picks a printer, of the setup file or defined by the host, and sees
/// what is known about it. Set printman and server_printers, run it with exec(), and read
/// printer_id. It is as small as its layout allows and cannot be enlarged.
class PRINTMAN_EXPORT SelPrinterDlg : public selPrinterDlgBase {
    Q_OBJECT

public:
    explicit SelPrinterDlg(QWidget* parent = nullptr, const char* name = nullptr,
                           bool modal = false, Qt::WindowFlags flags = {});

    CPrintMan* printman = nullptr; ///< has the host-defined printers; owned by the caller
    bool server_printers = false;  ///< offer host-defined printers, not those of the setup file
    QString printer_id; ///< the last printer that was picked and found; empty if there is none

public slots:
    /// Accepts, even if nothing was picked.
    void btnOK_clicked();

    /// Rejects.
    void btnCancel_clicked();

    /// Shows the printer with the id @p text and remembers it; nothing changes if there is none.
    void cbPrinterID_activated(const QString& text);

public:
    /// Appends the ids of the printers that server_printers selects to the list.
    ///
    /// @return what get_remoteprt_id() or get_localprt_id() returns
    int load_printer_id();

    /// Appends the ids of the printers in use in the setup file at get_prtbin_path().
    ///
    /// @return 0; -1, with the list unchanged, when the file has no complete header or may not be
    ///         written, although nothing is written to it
    int get_localprt_id();

    /// Appends the ids of the host-defined printers, one for every slot of the host's list.
    ///
    /// @return 0, also without a print manager
    int get_remoteprt_id();

    /// Loads the list and picks none of its entries. Called when the dialog is first shown and when
    /// it is shown after it was hidden; earlier entries stay, so that ids are then listed twice.
    void init_dialog();

    /// Looks up a printer in the setup file at get_prtbin_path(); see the free get_prt_data().
    /// Every output may be null.
    ///
    /// @param face receives at most 128 bytes; unchanged when the printer's record has no font name
    /// @return 0; -1 when the id is not found or get_localprt_id() would fail, with the outputs
    ///         unchanged
    int get_localprt_data(char* id, char* name, char* face, unsigned int* value,
                          DLWDEVMODE* devmode, FontInfo* font, PageInfo* page, MarginInfo* margins);

    /// Looks up the printer @p id among those that server_printers selects.
    ///
    /// @return 1 with @p record filled in; 0 when it is not found: @p record is then all zero for a
    ///         printer of the setup file and unchanged for a host-defined one
    int get_prt_data(const QString& id, WinPrtSetup* record);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    int get_local_record(const QString& id, WinPrtSetup* record);
    int get_remote_record(const QString& id, WinPrtSetup* record) const;
    void show_record(const WinPrtSetup& record);

    char id_[128] = {};
    char name_[128] = {};
    char face_[128] = {};
    unsigned int setup_value_ = 0;
    FontInfo font_ = {};
    DLWDEVMODE devmode_ = {};
    PageInfo page_ = {};
    MarginInfo margins_ = {};
    bool needs_init_ = true;
};
