#include "ui_printdestdlgbase.h"

#include <printman/dialogs/desttexts.h>
#include <printman/dialogs/printdestdlg.h>
#include <printman/dialogs/printerfields.h>
#include <printman/dialogs/selprinterdlg.h>
#include <printman/dialogs/selunixprinterdlg.h>
#include <printman/printer/hostservices.h>
#include <printman/printman.h>
#include <printman/render/screensettings.h>
#include <printman/toolkit/legacyweight.h>
#include <printman/toolkit/qmimesourcefactory.h>

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QFontDialog>
#include <QHideEvent>
#include <QPointer>
#include <QValidator>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>

using namespace printman;

namespace {

enum Destination { to_screen = 1, to_printer = 2, to_file = 3 };

constexpr int least_label_width = 60;
constexpr int longest_printer_id = sizeof PrintDest::prt_id - 1;
constexpr int longest_path = sizeof PrintDest::path - 1;

QString path_text(const PrintDest& dest) {
    return QFile::decodeName(std::string(field_text(dest.path)).c_str());
}

bool is_page_format_off() {
    const char* setting = GetEnv("NOPAGEMAP", "dlwmenu.ini", "env");
    return setting && (*setting == 'y' || *setting == 'Y');
}

/// Refuses what is typed beyond the record's path, of whose bytes a character may take several.
class PathValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& text, int& /*cursor*/) const override {
        return QFile::encodeName(text).size() <= longest_path ? Acceptable : Invalid;
    }
};

/// Runs @p chooser and deletes it.
///
/// @return the printer chosen; none when it is cancelled, or goes with its parent
template <typename Chooser>
std::optional<QString> choose_printer(const QPointer<Chooser>& chooser) {
    std::optional<QString> id;
    if (chooser->exec() == QDialog::Accepted && chooser)
        id = chooser->printer_id;
    delete chooser;
    return id;
}

std::optional<QString> choose_printer(QWidget* parent, CPrintMan* printman, bool on_server) {
    const QPointer<SelPrinterDlg> chooser = new SelPrinterDlg(parent, nullptr, true);
    chooser->printman = printman;
    chooser->server_printers = on_server;
    return choose_printer(chooser);
}

std::optional<QString> choose_unix_printer(QWidget* parent, CPrintMan* printman) {
    const QPointer<SelUnixPrinterDlg> chooser = new SelUnixPrinterDlg(parent, nullptr, true);
    chooser->printman = printman;
    return choose_printer(chooser);
}

/// The file to save in; none when the dialog is cancelled, or goes with @p parent.
std::optional<QString> choose_file(QWidget* parent) {
    const QPointer<QFileDialog> chooser = new QFileDialog(parent, PrintDestDlg::tr("File Save"));
    chooser->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite);
    chooser->setAcceptMode(QFileDialog::AcceptSave);
    chooser->setFileMode(QFileDialog::AnyFile);
    const QString text_filter = PrintDestDlg::tr("Text (*.txt)");
    chooser->setNameFilters({text_filter, PrintDestDlg::tr("PDF (*.pdf)")});
    chooser->selectNameFilter(text_filter);
    std::optional<QString> path;
    if (chooser->exec() == QDialog::Accepted && chooser)
        path = save_path(chooser->selectedFiles().value(0), chooser->selectedNameFilter());
    delete chooser;
    return path;
}

} // namespace

printdestDlgBase::printdestDlgBase(QWidget* parent, const char* name, bool modal,
                                   Qt::WindowFlags flags)
    : QDialog(parent, flags), ui_(std::make_unique<Ui::printdestDlgBase>()) {
    setObjectName(QString::fromUtf8(name));
    setModal(modal);
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
    fit_to_texts();
    if (QMimeSourceFactory* images = QMimeSourceFactory::defaultFactory())
        PixmapLabel1->setPixmap(images->pixmap(QStringLiteral("korvologo.png")));
}

printdestDlgBase::~printdestDlgBase() = default;

/// Has every field be wide enough for what usually stands in it, and the label for its text.
void printdestDlgBase::fit_to_texts() {
    for (QLineEdit* const field : {txtPrintID, txtPathName, txtFont})
        make_room(field, QStringLiteral("Liberation Mono, DemiBold regular, size 10"));
    lbPrintID->setMinimumWidth(std::max(least_label_width, lbPrintID->sizeHint().width()));
}

void printdestDlgBase::languageChange() {
    ui_->retranslateUi(this);
    fit_to_texts();
}

void printdestDlgBase::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        languageChange();
    QDialog::changeEvent(event);
    if (is_of_font(*event))
        fit_to_texts();
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
    // Smaller than the layout's smallest size, which then is the dialog's only one.
    setMaximumSize(10, 10);
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
    txtPrintID->setMaxLength(longest_printer_id);
    txtPathName->setMaxLength(longest_path);
    txtPathName->setValidator(new PathValidator(txtPathName));
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
    server_printer_id = text_of(dest.prt_id);
    const bool on_server = dest.server_print != 0;
    (on_server ? opServerPrint : opLocalPrint)->setChecked(true);
    txtPrintID->setText(on_server ? server_printer_id : local_printer_id);
    if (!on_server)
        has_local_id_ = true;
    spNCopies->setValue(dest.copies);
    chkCollate->setChecked(dest.collate != 0);
    chkPageLength->setChecked(dest.page_length != 0);
    chkSelPrtFnt->setChecked(!on_server && !has_local_id_ && dest.sel_prt_font != 0);
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
    // A path that is no text in the encoding of file names comes back as it was.
    if (path == path_text(dest))
        terminate_field(dest.path);
    else
        put_text(dest.path, sizeof dest.path, fitting_file_name(path, longest_path).toStdString());
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
    // Without an id the dialog may be gone.
    if (!id)
        return;
    txtPrintID->setText(*id);
    (on_server ? server_printer_id : local_printer_id) = *id;
}

void PrintDestDlg::txtPathName_textChanged(const QString& /*text*/) {}

void PrintDestDlg::btnFileBrw_clicked() {
    const auto path = choose_file(this);
    if (!path)
        return;
    if (QFile::encodeName(*path).size() <= longest_path)
        txtPathName->setText(*path);
    else
        QApplication::beep();
}

void PrintDestDlg::txtFont_textChanged(const QString& /*text*/) {}

void PrintDestDlg::btnFontBrw_clicked() {
    const QPointer<QFontDialog> chooser = new QFontDialog(this);
    chooser->setCurrentFont(QFont());
    const bool is_confirmed = chooser->exec() == QDialog::Accepted;
    // It goes with this dialog.
    if (!chooser)
        return;
    const QFont font = is_confirmed ? chooser->selectedFont() : QFont();
    delete chooser;
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

/// Has the keyboard start at the destination that is chosen.
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
    // A window that the desktop minimises is not hidden for its user: what was entered stays.
    if (!event->spontaneous())
        needs_init_ = true;
    printdestDlgBase::hideEvent(event);
}
