#include "ui_selprinterdlgbase.h"

#include <printman/dialogs/printerfields.h>
#include <printman/dialogs/printerwalk.h>
#include <printman/dialogs/selprinterdlg.h>
#include <printman/printer/papersize.h>
#include <printman/printer/paths.h>
#include <printman/printer/setupfile.h>
#include <printman/printman.h>
#include <printman/system/regularfile.h>
#include <printman/toolkit/widgets.h>

#include <QFile>
#include <QHideEvent>

#include <fcntl.h>
#include <unistd.h>

using namespace printman;

namespace {

constexpr qsizetype min_path = 4;
constexpr off_t header_size = 8;
constexpr int paper_text_size = 80;

/// The printer setup file; empty when it has no complete header or may not be written.
QString local_setup_file() {
    QString path = get_prtbin_path();
    if (path.size() < min_path)
        return {};
    off_t size = 0;
    const int fd = open_regular_descriptor(QFile::encodeName(path).constData(), O_RDWR, &size);
    if (fd < 0)
        return {};
    ::close(fd);
    return size >= header_size ? path : QString();
}

auto host_printers(CPrintMan* printman) {
    return PrinterWalk(printman, &CPrintMan::first_win_printer, &CPrintMan::next_win_printer);
}

const char* orientation_text(int orientation) {
    if (orientation == 0)
        return "Portrait";
    return orientation == 1 ? "Landscape" : "";
}

/// Inches with two decimals.
QString inches(double margin) {
    return QString::number(margin, 'f', 2);
}

} // namespace

selPrinterDlgBase::selPrinterDlgBase(QWidget* parent, const char* name, bool modal,
                                     Qt::WindowFlags flags)
    : FormDialog(parent, name, modal, flags), ui_(std::make_unique<Ui::selPrinterDlgBase>()) {
    ui_->setupUi(this);
    take_widgets();
    selPrinterDlgBase::fit_to_font();
    resize(size().expandedTo(minimumSizeHint()));
}

selPrinterDlgBase::~selPrinterDlgBase() = default;

void selPrinterDlgBase::take_widgets() {
    lbPrinterID = ui_->lbPrinterID;
    cbPrinterID = ui_->cbPrinterID;
    gbPrinter = ui_->gbPrinter;
    lbPrinterName = ui_->lbPrinterName;
    txtPrinterName = ui_->txtPrinterName;
    lbPaperSize = ui_->lbPaperSize;
    txtPaperSize = ui_->txtPaperSize;
    lbOrientation = ui_->lbOrientation;
    txtOrientation = ui_->txtOrientation;
    btnOK = ui_->btnOK;
    btnCancel = ui_->btnCancel;
    gbFont = ui_->gbFont;
    lbFontName = ui_->lbFontName;
    txtFontName = ui_->txtFontName;
    lbStype = ui_->lbStype;
    txtStyle = ui_->txtStyle;
    lbSize = ui_->lbSize;
    txtSize = ui_->txtSize;
    gbDefPageLength = ui_->gbDefPageLength;
    lbPageLength = ui_->lbPageLength;
    txtPageLength = ui_->txtPageLength;
    lbFirstLine = ui_->lbFirstLine;
    txtFirstLine = ui_->txtFirstLine;
    lbLastLine = ui_->lbLastLine;
    txtLastLine = ui_->txtLastLine;
    gbPageMargins = ui_->gbPageMargins;
    lbTop = ui_->lbTop;
    txtTop = ui_->txtTop;
    TextLabel1 = ui_->TextLabel1;
    lbBottom = ui_->lbBottom;
    txtBottom = ui_->txtBottom;
    TextLabel1_2 = ui_->TextLabel1_2;
    lbLeft = ui_->lbLeft;
    txtLeft = ui_->txtLeft;
    TextLabel1_3 = ui_->TextLabel1_3;
    lbRight = ui_->lbRight;
    txtRight = ui_->txtRight;
    TextLabel1_4 = ui_->TextLabel1_4;
}

/// Makes every field wide enough for a usual text.
void selPrinterDlgBase::fit_to_font() {
    make_room(txtPaperSize, QStringLiteral("105 x 241 mm, US Common #10 Emvelope"));
    for (QLineEdit* const number :
         {txtSize, txtPageLength, txtFirstLine, txtLastLine, txtTop, txtBottom, txtLeft, txtRight})
        make_room(number, QStringLiteral("000.00"));
}

void selPrinterDlgBase::languageChange() {
    ui_->retranslateUi(this);
}

SelPrinterDlg::SelPrinterDlg(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags)
    : selPrinterDlgBase(parent, name, modal, flags) {
    connect(btnOK, &QPushButton::clicked, this, &SelPrinterDlg::btnOK_clicked);
    connect(btnCancel, &QPushButton::clicked, this, &SelPrinterDlg::btnCancel_clicked);
    connect(cbPrinterID, &QComboBox::textActivated, this, &SelPrinterDlg::cbPrinterID_activated);
    cbPrinterID->lineEdit()->setReadOnly(true);
    cbPrinterID->setCompleter(nullptr);
    fix_size();
}

void SelPrinterDlg::btnOK_clicked() {
    accept();
}

void SelPrinterDlg::btnCancel_clicked() {
    reject();
}

void SelPrinterDlg::cbPrinterID_activated(const QString& text) {
    show_beginning(cbPrinterID);
    WinPrtSetup record{};
    if (get_prt_data(text, &record) == 0)
        return;
    show_record(record);
    printer_id = latin1_text(record.printer_id);
}

void SelPrinterDlg::show_record(const WinPrtSetup& record) {
    show_text(txtPrinterName, latin1_text(record.printer_name));
    show_text(txtPaperSize, latin1_text(record.paper_name));
    show_text(txtOrientation, latin1_text(record.orientation_name));
    show_text(txtFontName, latin1_text(record.font_name));
    show_text(txtStyle, latin1_text(record.style_name));
    show_number(txtSize, record.point_size);
    show_number(txtPageLength, record.page_length);
    show_number(txtFirstLine, record.first_line);
    show_number(txtLastLine, record.last_line);
    show_text(txtTop, inches(record.top));
    show_text(txtBottom, inches(record.bottom));
    show_text(txtLeft, inches(record.left));
    show_text(txtRight, inches(record.right));
}

int SelPrinterDlg::load_printer_id() {
    return server_printers ? get_remoteprt_id() : get_localprt_id();
}

int SelPrinterDlg::get_localprt_id() {
    const QString path = local_setup_file();
    if (path.isEmpty())
        return -1;
    SetupFile file(QFile::encodeName(path).constData());
    QStringList ids;
    SetupRecord record;
    while (file.next(record)) {
        if (record.in_use != 0)
            ids << latin1_text(record.printer_id);
    }
    cbPrinterID->addItems(ids);
    return 0;
}

int SelPrinterDlg::get_remoteprt_id() {
    cbPrinterID->addItems(host_printers(printman).ids());
    return 0;
}

void SelPrinterDlg::init_dialog() {
    load_printer_id();
    choose_none(cbPrinterID);
}

// NOLINTNEXTLINE(readability-non-const-parameter): hosts rely on the signature
int SelPrinterDlg::get_localprt_data(char* id, char* name, char* face, unsigned int* value,
                                     DLWDEVMODE* devmode, FontInfo* font, PageInfo* page,
                                     MarginInfo* margins) {
    const QString path = local_setup_file();
    if (path.isEmpty())
        return -1;
    char found_face[sizeof face_] = {};
    int found_value = 0;
    if (::get_prt_data(path, id, name, found_face, &found_value, devmode, font, page, margins) != 0)
        return -1;
    if (found_face[0] != '\0')
        put_text(face, sizeof found_face, found_face);
    if (value)
        *value = static_cast<unsigned int>(found_value);
    return 0;
}

int SelPrinterDlg::get_prt_data(const QString& id, WinPrtSetup* record) {
    if (!record)
        return 0;
    return server_printers ? get_remote_record(id, record) : get_local_record(id, record);
}

int SelPrinterDlg::get_local_record(const QString& id, WinPrtSetup* record) {
    *record = {};
    put_text(id_, sizeof id_, id.toLatin1().toStdString());
    // An id that is not Latin-1 or does not fit must not be mistaken for another one.
    if (latin1_text(id_) != id)
        return 0;
    if (get_localprt_data(id_, name_, face_, &setup_value_, &devmode_, &font_, &page_, &margins_) !=
        0)
        return 0;
    put_text(record->printer_id, sizeof record->printer_id, id_);
    put_text(record->printer_name, sizeof record->printer_name, name_);
    char paper[paper_text_size];
    if (get_paper_size(&devmode_, paper, sizeof paper) > 0)
        put_text(record->paper_name, sizeof record->paper_name, paper);
    put_text(record->orientation_name, sizeof record->orientation_name,
             orientation_text(devmode_.orientation));
    put_text(record->font_name, sizeof record->font_name, face_);
    put_text(record->style_name, sizeof record->style_name, field_text(font_.style_name));
    record->point_size = font_.point_size;
    if (page_.use_default_page_length != 0) {
        record->page_length = page_.page_length;
        record->first_line = page_.first_line;
        record->last_line = page_.last_line;
    }
    record->top = margins_.top;
    record->bottom = margins_.bottom;
    record->left = margins_.left;
    record->right = margins_.right;
    return 1;
}

int SelPrinterDlg::get_remote_record(const QString& id, WinPrtSetup* record) const {
    const auto found = host_printers(printman).find(id);
    if (!found)
        return 0;
    *record = *found;
    return 1;
}

void SelPrinterDlg::showEvent(QShowEvent* event) {
    if (needs_init_) {
        needs_init_ = false;
        init_dialog();
    }
    selPrinterDlgBase::showEvent(event);
}

void SelPrinterDlg::hideEvent(QHideEvent* event) {
    // To its user a minimized window is not hidden: its list stays.
    if (!event->spontaneous())
        needs_init_ = true;
    selPrinterDlgBase::hideEvent(event);
}
