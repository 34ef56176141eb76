#pragma once

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
class selUnixPrinterDlgBase;
}

/// The widgets of the dialog that shows a local printer of the system, without behaviour. All
/// fields whose names begin with "txt" are read-only.
class PRINTMAN_EXPORT selUnixPrinterDlgBase : public printman::FormDialog {
    Q_OBJECT

public:
    /// @param name the object's name; null or empty for "selUnixPrinterDlgBase"
    explicit selUnixPrinterDlgBase(QWidget* parent = nullptr, const char* name = nullptr,
                                   bool modal = false, Qt::WindowFlags flags = {});
    ~selUnixPrinterDlgBase() override;

    QGroupBox* gbPrinter;
    QLabel* lbPrinterID;
    QComboBox* cbPrinterID; ///< the printer ids to choose from
    QLabel* lbPort;
    QLineEdit* txtPort;
    QLabel* lbDescription;
    QLineEdit* txtDescription;
    QGroupBox* gbDefPageLength;
    QLabel* lbPageLength;
    QLineEdit* txtPageLength;
    QLabel* lbFirstLine;
    QLineEdit* txtFirstLine;
    QLabel* lbLastLine;
    QLineEdit* txtLastLine;
    QPushButton* btnOK;
    QPushButton* btnCancel;

public slots:
    void languageChange() override;

protected:
    void fit_to_font() override;

private:
    std::unique_ptr<Ui::selUnixPrinterDlgBase> ui_;
};

/// The dialog in which the user picks a local printer of the system, from the list that the host
/// gave the print manager, and sees what is known about it. Set printman, run it with exec(), and
/// read printer_id. It is as small as its layout allows and cannot be enlarged.
class PRINTMAN_EXPORT SelUnixPrinterDlg : public selUnixPrinterDlgBase {
    Q_OBJECT

public:
    explicit SelUnixPrinterDlg(QWidget* parent = nullptr, const char* name = nullptr,
                               bool modal = false, Qt::WindowFlags flags = {});

    CPrintMan* printman = nullptr; ///< has the printers; owned by the caller
    QString printer_id;            ///< the last id that was picked; empty if there is none

public slots:
    /// Remembers @p text and shows the printer with that id; if there is none, the fields stay.
    void cbPrinterID_activated(const QString& text);

    /// Accepts, even if nothing was picked.
    void btnOK_clicked();

    /// Rejects.
    void btnCancel_clicked();

public:
    /// Fills the list with the ids of all slots of the print manager's list and picks none of them;
    /// a list that has entries stays. Called whenever the dialog is shown.
    void load_printers();

protected:
    void showEvent(QShowEvent* event) override;
};
