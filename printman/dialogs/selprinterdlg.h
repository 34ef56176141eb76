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
    QLabel* TextLabel1; ///< the unit behind txtTop
    QLabel* lbBottom;
    QLineEdit* txtBottom;
    QLabel* TextLabel1_2; ///< the unit behind txtBottom
    QLabel* lbLeft;
    QLineEdit* txtLeft;
    QLabel* TextLabel1_3; ///< the unit behind txtLeft
    QLabel* lbRight;
    QLineEdit* txtRight;
    QLabel* TextLabel1_4; ///< the unit behind txtRight

public slots:
    void languageChange() override;

protected:
    void fit_to_font() override;

private:
    void take_widgets();

    std::unique_ptr<Ui::selPrinterDlgBase> ui_;
};

/// The dialog in which the user picks a printer of the setup file or one that the host defined, and
/// sees what is known about it. Set printman and server_printers, run it with exec(), and take
/// printer_id. It is as small as its layout allows and cannot be enlarged.
class PRINTMAN_EXPORT SelPrinterDlg : public selPrinterDlgBase {
    Q_OBJECT

public:
    explicit SelPrinterDlg(QWidget* parent = nullptr, const char* name = nullptr,
                           bool modal = false, Qt::WindowFlags flags = {});

    CPrintMan* printman = nullptr; ///< has the host-defined printers; the caller keeps it
    bool server_printers = false;  ///< host-defined printers, not those of the setup file
    QString printer_id; ///< the printer that was picked and found last; empty without one

public slots:
    /// Accepts, whatever was picked.
    void btnOK_clicked();

    /// Rejects.
    void btnCancel_clicked();

    /// Shows the printer @p text and remembers it; nothing changes when there is none.
    void cbPrinterID_activated(const QString& text);

public:
    /// Appends the ids of the printers that server_printers says to the list.
    ///
    /// @return what get_remoteprt_id() or get_localprt_id() returns
    int load_printer_id();

    /// Appends the ids of the printers in use in the setup file at get_prtbin_path().
    ///
    /// @return 0; -1, and the list stays, when the file has no whole header or cannot be opened for
    ///         reading and writing, which it is not
    int get_localprt_id();

    /// Appends the ids of the host-defined printers: every slot of the host's list.
    ///
    /// @return 0, also without a print manager
    int get_remoteprt_id();

    /// Loads the list and picks none of it. It is called when the dialog is shown, the first time
    /// and after it was hidden; what the list has stays, so that ids are then there twice.
    void init_dialog();

    /// Looks up a printer in the setup file at get_prtbin_path(); see the free get_prt_data().
    /// Every output may be null.
    ///
    /// @param face receives at most 128 bytes; stays when the printer's record has no font name
    /// @return 0; -1 when the id is not found or get_localprt_id() would fail, and the outputs then
    ///         stay
    int get_localprt_data(char* id, char* name, char* face, unsigned int* value,
                          DLWDEVMODE* devmode, FontInfo* font, PageInfo* page, MarginInfo* margins);

    /// Looks up the printer @p id among those that server_printers says.
    ///
    /// @return 1, and @p record is filled; 0 when it is not found: @p record is then zero for a
    ///         printer of the setup file and stays for a host-defined one
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
