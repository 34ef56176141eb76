#include "ui_selunixprinterdlgbase.h"

#include <printman/dialogs/printerfields.h>
#include <printman/dialogs/printerwalk.h>
#include <printman/dialogs/selunixprinterdlg.h>
#include <printman/printman.h>
#include <printman/toolkit/widgets.h>

using namespace printman;

namespace {

auto unix_printers(CPrintMan* printman) {
    return PrinterWalk(printman, &CPrintMan::first_unix_printer, &CPrintMan::next_unix_printer);
}

} // namespace

selUnixPrinterDlgBase::selUnixPrinterDlgBase(QWidget* parent, const char* name, bool modal,
                                             Qt::WindowFlags flags)
    : FormDialog(parent, name, modal, flags), ui_(std::make_unique<Ui::selUnixPrinterDlgBase>()) {
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
    selUnixPrinterDlgBase::fit_to_font();
    resize(size().expandedTo(minimumSizeHint()));
}

selUnixPrinterDlgBase::~selUnixPrinterDlgBase() = default;

/// Makes every field wide enough for a usual text.
void selUnixPrinterDlgBase::fit_to_font() {
    make_room(txtDescription, QStringLiteral("Laser printer in the office, second floor"));
    for (QLineEdit* const number : {txtPageLength, txtFirstLine, txtLastLine})
        make_room(number, QStringLiteral("000000"));
}

void selUnixPrinterDlgBase::languageChange() {
    ui_->retranslateUi(this);
}

SelUnixPrinterDlg::SelUnixPrinterDlg(QWidget* parent, const char* name, bool modal,
                                     Qt::WindowFlags flags)
    : selUnixPrinterDlgBase(parent, name, modal, flags) {
    connect(cbPrinterID, &QComboBox::textActivated, this,
            &SelUnixPrinterDlg::cbPrinterID_activated);
    connect(btnOK, &QPushButton::clicked, this, &SelUnixPrinterDlg::btnOK_clicked);
    connect(btnCancel, &QPushButton::clicked, this, &SelUnixPrinterDlg::btnCancel_clicked);
    cbPrinterID->setCompleter(nullptr);
    fix_size();
}

void SelUnixPrinterDlg::cbPrinterID_activated(const QString& text) {
    show_beginning(cbPrinterID);
    printer_id = text;
    const auto record = unix_printers(printman).find(printer_id);
    if (!record)
        return;
    show_text(txtPort, latin1_text(record->port));
    show_text(txtDescription, latin1_text(record->description));
    show_number(txtPageLength, record->page_length);
    show_number(txtFirstLine, record->first_line);
    show_number(txtLastLine, record->last_line);
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
    cbPrinterID->addItems(unix_printers(printman).ids());
    choose_none(cbPrinterID);
    cbPrinterID->lineEdit()->setReadOnly(true);
}

void SelUnixPrinterDlg::showEvent(QShowEvent* event) {
    load_printers();
    selUnixPrinterDlgBase::showEvent(event);
}
