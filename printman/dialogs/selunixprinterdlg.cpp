#include "ui_selunixprinterdlgbase.h"

#include <printman/dialogs/printerfields.h>
#include <printman/dialogs/selunixprinterdlg.h>
#include <printman/printman.h>

#include <QEvent>

using namespace printman;

selUnixPrinterDlgBase::selUnixPrinterDlgBase(QWidget* parent, const char* name, bool modal,
                                             Qt::WindowFlags flags)
    : QDialog(parent, flags), ui_(std::make_unique<Ui::selUnixPrinterDlgBase>()) {
    setObjectName(QString::fromUtf8(name));
    setModal(modal);
    ui_->setupUi(this);
    gbPrinter = ui_->gbPrinter;
    lbPrinterID = ui_->lbPrinterID;
    cbPrinterID = ui_->cbPrinterID;
    lbPort = ui_->lbPort;
    txtPort = ui_->txtPort;
    lbDescription = ui_->lbDescription;
    txtDescription = ui_->txtDescription;
    gbDefPageLength = ui_->gbDefPageLength;
    lbPageLength = ui_->lbPageLength;
    txtPageLength = ui_->txtPageLength;
    lbFirstLine = ui_->lbFirstLine;
    txtFirstLine = ui_->txtFirstLine;
    lbLastLine = ui_->lbLastLine;
    txtLastLine = ui_->txtLastLine;
    btnOK = ui_->btnOK;
    btnCancel = ui_->btnCancel;
    fit_to_font();
    resize(size().expandedTo(minimumSizeHint()));
}

selUnixPrinterDlgBase::~selUnixPrinterDlgBase() = default;

/// Has every field be wide enough for what usually stands in it.
void selUnixPrinterDlgBase::fit_to_font() {
    make_room(txtDescription, QStringLiteral("Laser printer in the office, second floor"));
    for (QLineEdit* const number : {txtPageLength, txtFirstLine, txtLastLine})
        make_room(number, QStringLiteral("000000"));
}

void selUnixPrinterDlgBase::languageChange() {
    ui_->retranslateUi(this);
}

void selUnixPrinterDlgBase::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        languageChange();
    QDialog::changeEvent(event);
    if (is_of_font(*event))
        fit_to_font();
}

SelUnixPrinterDlg::SelUnixPrinterDlg(QWidget* parent, const char* name, bool modal,
                                     Qt::WindowFlags flags)
    : selUnixPrinterDlgBase(parent, name, modal, flags) {
    connect(cbPrinterID, &QComboBox::textActivated, this,
            &SelUnixPrinterDlg::cbPrinterID_activated);
    connect(btnOK, &QPushButton::clicked, this, &SelUnixPrinterDlg::btnOK_clicked);
    connect(btnCancel, &QPushButton::clicked, this, &SelUnixPrinterDlg::btnCancel_clicked);
    cbPrinterID->setCompleter(nullptr);
    // Smaller than the layout's smallest size, which then is the dialog's only one.
    setMaximumSize(10, 10);
}

void SelUnixPrinterDlg::cbPrinterID_activated(const QString& text) {
    show_beginning(cbPrinterID);
    printer_id = text;
    if (!printman)
        return;
    UnixPrtSetup record;
    int found = printman->first_unix_printer(&record);
    while (found > 0 && text_of(record.printer_id) != printer_id)
        found = printman->next_unix_printer(&record);
    if (found <= 0)
        return;
    show_text(txtPort, text_of(record.port));
    show_text(txtDescription, text_of(record.description));
    show_number(txtPageLength, record.page_length);
    show_number(txtFirstLine, record.first_line);
    show_number(txtLastLine, record.last_line);
}

void SelUnixPrinterDlg::btnOK_clicked() {
    accept();
}

void SelUnixPrinterDlg::btnCancel_clicked() {
    reject();
}

void SelUnixPrinterDlg::load_printers() {
    if (cbPrinterID->count() != 0)
        return;
    if (printman) {
        QStringList ids;
        UnixPrtSetup record;
        for (int more = printman->first_unix_printer(&record); more > 0;
             more = printman->next_unix_printer(&record))
            ids << text_of(record.printer_id);
        cbPrinterID->addItems(ids);
    }
    // The first entries of an empty list have been chosen.
    cbPrinterID->setCurrentIndex(-1);
    cbPrinterID->clearEditText();
    cbPrinterID->lineEdit()->setReadOnly(true);
}

void SelUnixPrinterDlg::showEvent(QShowEvent* event) {
    load_printers();
    selUnixPrinterDlgBase::showEvent(event);
}
