#include "ui_printdestdlgbase.h"

#include <printman/dialogs/destchoice.h>
#include <printman/dialogs/desttexts.h>
#include <printman/dialogs/printdestdlg.h>
#include <printman/dialogs/printerfields.h>
#include <printman/printer/hostservices.h>
#include <printman/printman.h>
#include <printman/render/screensettings.h>
#include <printman/toolkit/legacyweight.h>
#include <printman/toolkit/modaldialog.h>
#include <printman/toolkit/qmimesourcefactory.h>

#include <QApplication>
#include <QFile>
#include <QFontDialog>
#include <QHideEvent>

#include <algorithm>
#include <cstring>
#include <string>

using namespace printman;

namespace {

constexpr int min_label_width = 60;
constexpr int max_printer_id = sizeof PrintDest::prt_id - 1;

QString path_text(const PrintDest& dest) {
    return QFile::decodeName(std::string(field_text(dest.path)).c_str());
}

bool is_page_format_off() {
    const char* setting = GetEnv("NOPAGEMAP", "dlwmenu.ini", "env");
    return setting && (*setting == 'y' || *setting == 'Y');
}

} // namespace

printdestDlgBase::printdestDlgBase(QWidget* parent, const char* name, bool modal,
                                   Qt::WindowFlags flags)
    : FormDialog(parent, name, modal, flags), ui_(std::make_unique<Ui::printdestDlgBase>()) {
    ui_->setupUi(this);
    bgbExecDest = ui_->bgbExecDest;
    opToScreen = ui_->opToScreen;
    opToPrinter = ui_->opToPrinter;
    opToFile = ui_->opToFile;
    PixmapLabel1 = ui_->PixmapLabel1;
    bgbPrint = ui_->bgbPrint;
    opLocalPrint = ui_->opLocalPrint;
    opServerPrint = ui_->opServerPrint;
    lbPrintID = ui_->lbPrintID;
    txtPrintID = ui_->txtPrintID;
    btnPIDBrw = ui_->btnPIDBrw;
    lbNCopies = ui_->lbNCopies;
    spNCopies = ui_->spNCopies;
    chkCollate = ui_->chkCollate;
    chkPageLength = ui_->chkPageLength;
    chkSelPrtFnt = ui_->chkSelPrtFnt;
    chkNoPageFmt = ui_->chkNoPageFmt;
    gbFile = ui_->gbFile;
    lbSaveAs = ui_->lbSaveAs;
    txtPathName = ui_->txtPathName;
    btnFileBrw = ui_->btnFileBrw;
    gbScreen = ui_->gbScreen;
    lbFont = ui_->lbFont;
    txtFont = ui_->txtFont;
    btnFontBrw = ui_->btnFontBrw;
    btnOK = ui_->btnOK;
    btnCancel = ui_->btnCancel;
    printdestDlgBase::fit_to_font();
    if (QMimeSourceFactory* images = QMimeSourceFactory::defaultFactory())
        PixmapLabel1->setPixmap(images->pixmap(QStringLiteral("korvologo.png")));
}

printdestDlgBase::~printdestDlgBase() = default;

/// Makes every field wide enough for a usual text, and the label for its own.
void printdestDlgBase::fit_to_font() {
    for (QLineEdit* const field : {txtPrintID, txtPathName, txtFont})
        make_room(field, QStringLiteral("Liberation Mono, DemiBold regular, size 10"));
    lbPrintID->setMinimumWidth(std::max(min_label_width, lbPrintID->sizeHint().width()));
}

void printdestDlgBase::languageChange() {
    ui_->retranslateUi(this);
    fit_to_font();
}

PrintDestDlg::PrintDestDlg(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags)
    : printdestDlgBase(parent, name, modal, flags), weight_(legacy_weight(weighed_font_)) {
    make_connections();
    opToScreen->setChecked(true);
    opServerPrint->setChecked(true);
    spNCopies->setMinimum(1);
    spNCopies->setValue(1);
    chkCollate->setChecked(true);
    limit_texts();
    opToScreen_clicked();
    fix_size();
}

PrintDestDlg::~PrintDestDlg() = default;

void PrintDestDlg::make_connections() {
    connect(btnOK, &QPushButton::clicked, this, &PrintDestDlg::btnOK_clicked);
    connect(btnCancel, &QPushButton::clicked, this, &PrintDestDlg::btnCancel_clicked);
    connect(opToScreen, &QRadioButton::clicked, this, &PrintDestDlg::opToScreen_clicked);
    connect(opToPrinter, &QRadioButton::clicked, this, &PrintDestDlg::opToPrinter_clicked);
    connect(opToFile, &QRadioButton::clicked, this, &PrintDestDlg::opToFile_clicked);
    connect(opLocalPrint, &QRadioButton::clicked, this, &PrintDestDlg::opLocalPrint_clicked);
    connect(opServerPrint, &QRadioButton::clicked, this, &PrintDestDlg::opServerPrint_clicked);
    connect(btnPIDBrw, &QPushButton::clicked, this, &PrintDestDlg::btnPIDBrw_clicked);
    connect(btnFileBrw, &QPushButton::clicked, this, &PrintDestDlg::btnFileBrw_clicked);
    connect(btnFontBrw, &QPushButton::clicked, this, &PrintDestDlg::btnFontBrw_clicked);
    connect(chkNoPageFmt, &QCheckBox::clicked, this, &PrintDestDlg::chkNoPageFmt_clicked);
}

void PrintDestDlg::limit_texts() {
    txtPrintID->setMaxLength(max_printer_id);
    txtPathName->setMaxLength(max_dest_path);
    txtPathName->setValidator(new DestPathValidator(txtPathName));
}

void PrintDestDlg::set_print_dest(const PrintDest& record) {
    std::memcpy(&dest, &record, sizeof dest);
}

void PrintDestDlg::init_dialog() {
    if (dest.dest == to_screen)
        opToScreen->setChecked(true);
    else if (dest.dest == to_printer)
        opToPrinter->setChecked(true);
    else if (dest.dest == to_file)
        opToFile->setChecked(true);
    load_printer();
    if (is_page_format_off())
        dest.no_page_fmt = 1;
    chkNoPageFmt->setChecked(dest.no_page_fmt != 0);
    const QString path = path_text(dest);
    if (!path.isEmpty())
        txtPathName->setText(path);
    load_screenfont();
    show_screen_font();
}

void PrintDestDlg::load_printer() {
    server_printer_id = latin1_text(dest.prt_id);
    const bool on_server = dest.server_print != 0;
    (on_server ? opServerPrint : opLocalPrint)->setChecked(true);
    txtPrintID->setText(on_server ? server_printer_id : local_printer_id);
    if (!on_server)
        has_local_id_ = true;
    spNCopies->setValue(dest.copies);
    chkCollate->setChecked(dest.collate != 0);
    chkPageLength->setChecked(dest.page_length != 0);
    chkSelPrtFnt->setChecked(false);
}

void PrintDestDlg::rtn_dialog() {
    if (opToScreen->isChecked()) {
        dest.dest = to_screen;
    } else if (opToPrinter->isChecked()) {
        dest.dest = to_printer;
        store_printer();
    } else if (opToFile->isChecked()) {
        dest.dest = to_file;
        store_path();
    }
}

void PrintDestDlg::store_printer() {
    dest.server_print = opServerPrint->isChecked();
    dest.copies = spNCopies->value();
    dest.collate = chkCollate->isChecked();
    put_text(dest.prt_id, sizeof dest.prt_id, txtPrintID->text().toLatin1().toStdString());
    dest.page_length = chkPageLength->isChecked();
    dest.sel_prt_font = chkSelPrtFnt->isChecked();
    dest.no_page_fmt = chkNoPageFmt->isChecked();
}

void PrintDestDlg::store_path() {
    const QString path = txtPathName->text();
    // A path that is not valid in the encoding of file names is kept byte for byte.
    if (path == path_text(dest))
        terminate_field(dest.path);
    else
        put_text(dest.path, sizeof dest.path, fitting_file_name(path, max_dest_path).toStdString());
}

void PrintDestDlg::load_screenfont() {
    const auto settings = read_screen_font_settings();
    if (!settings)
        return;
    QFont font = screen_font;
    settings->apply(font);
    set_screen_font(font, settings->weight.value_or(screen_weight()));
}

QString PrintDestDlg::get_screenfont_string() const {
    return font_in_words(screen_font, screen_weight());
}

int PrintDestDlg::screen_weight() const {
    return screen_font == weighed_font_ ? weight_ : legacy_weight(screen_font);
}

void PrintDestDlg::set_screen_font(const QFont& font, int weight) {
    screen_font = font;
    weighed_font_ = font;
    weight_ = weight;
}

void PrintDestDlg::show_screen_font() {
    show_text(txtFont, get_screenfont_string());
}

void PrintDestDlg::enable_screen(bool enable) {
    gbScreen->setEnabled(enable);
}

void PrintDestDlg::enable_print(bool enable) {
    bgbPrint->setEnabled(enable);
}

void PrintDestDlg::enable_file(bool enable) {
    gbFile->setEnabled(enable);
}

void PrintDestDlg::btnOK_clicked() {
    rtn_dialog();
    accept();
}

void PrintDestDlg::btnCancel_clicked() {
    reject();
}

void PrintDestDlg::opToScreen_clicked() {
    enable_screen(true);
    enable_print(false);
    enable_file(false);
}

void PrintDestDlg::opToPrinter_clicked() {
    enable_print(true);
    enable_screen(false);
    enable_file(false);
    if (dest.server_print)
        offer_server_options();
    else
        offer_local_options();
}

void PrintDestDlg::opToFile_clicked() {
    enable_file(true);
    enable_print(false);
    enable_screen(false);
}

void PrintDestDlg::opLocalPrint_clicked() {
    offer_local_options();
    txtPrintID->setText(local_printer_id);
    dest.server_print = 0;
}

void PrintDestDlg::opServerPrint_clicked() {
    offer_server_options();
    txtPrintID->setText(server_printer_id);
    dest.server_print = 1;
}

void PrintDestDlg::offer_local_options() {
    const QByteArray id = local_printer_id.toLatin1();
    chkPageLength->setChecked(printman && printman->has_local_defpagelen(id.constData()) != 0);
    chkSelPrtFnt->setEnabled(!has_local_id_);
    chkSelPrtFnt->setChecked(false);
}

void PrintDestDlg::offer_server_options() {
    const QByteArray id = server_printer_id.toLatin1();
    chkPageLength->setChecked(printman && printman->has_remote_defpagelen(id.constData()) != 0);
    chkSelPrtFnt->setEnabled(false);
    chkSelPrtFnt->setChecked(false);
}

void PrintDestDlg::txtPrintID_textChanged(const QString& /*text*/) {}

void PrintDestDlg::btnPIDBrw_clicked() {
    const bool on_server = opServerPrint->isChecked();
    const bool from_unix_list = on_server && printman && printman->is_unix_print();
    const auto id = from_unix_list
                        ? choose_unix_printer(this, printman)
                        : choose_printer(this, on_server ? printman : nullptr, on_server);
    // Without an id this dialog may have been destroyed.
    if (!id)
        return;
    txtPrintID->setText(*id);
    (on_server ? server_printer_id : local_printer_id) = *id;
}

void PrintDestDlg::txtPathName_textChanged(const QString& /*text*/) {}

void PrintDestDlg::btnFileBrw_clicked() {
    const auto path = choose_dest_file(this);
    if (!path)
        return;
    if (QFile::encodeName(*path).size() <= max_dest_path)
        txtPathName->setText(*path);
    else
        QApplication::beep();
}

void PrintDestDlg::txtFont_textChanged(const QString& /*text*/) {}

void PrintDestDlg::btnFontBrw_clicked() {
    ModalDialog<QFontDialog> chooser(this);
    chooser->setCurrentFont(QFont());
    const bool is_confirmed = chooser.run();
    // This dialog was destroyed with it.
    if (!chooser)
        return;
    const QFont font = is_confirmed ? chooser->selectedFont() : QFont();
    set_screen_font(font, legacy_weight(font));
    if (is_confirmed)
        show_screen_font();
}

void PrintDestDlg::chkNoPageFmt_clicked() {
    SetEnv(chkNoPageFmt->isChecked() ? "NOPAGEMAP=yes" : "NOPAGEMAP=no", "dlwmenu.ini", "env", 1);
}

void PrintDestDlg::showEvent(QShowEvent* event) {
    if (needs_init_) {
        needs_init_ = false;
        init_dialog();
        focus_destination();
    }
    printdestDlgBase::showEvent(event);
}

/// Gives the keyboard focus to the destination that is chosen.
void PrintDestDlg::focus_destination() {
    const QWidget* const focused = focusWidget();
    if (focused && focused->parentWidget() != bgbExecDest)
        return;
    for (QRadioButton* const button : {opToScreen, opToPrinter, opToFile}) {
        if (button->isChecked())
            button->setFocus();
    }
}

void PrintDestDlg::hideEvent(QHideEvent* event) {
    // To its user a minimized window is not hidden: what was entered stays.
    if (!event->spontaneous())
        needs_init_ = true;
    printdestDlgBase::hideEvent(event);
}
