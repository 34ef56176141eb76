#include "ui_kscolordlgbase.h"

#include <printman/dialogs/kscolordlg.h>
#include <printman/printer/hostservices.h>
#include <printman/render/screensettings.h>
#include <printman/toolkit/modaldialog.h>

#include <QColorDialog>
#include <QPixmap>

using namespace printman;

namespace {

void save_color(const char* key, const QColor& color) {
    const QString entry = QStringLiteral("%1=%2,%3,%4")
                              .arg(QLatin1String(key))
                              .arg(color.red())
                              .arg(color.green())
                              .arg(color.blue());
    SetEnv(entry.toLatin1().constData(), "dlwmenu.ini", "color", 1);
}

void paint_swatch(QLabel* swatch, const QColor& color) {
    const qreal ratio = swatch->devicePixelRatioF();
    QPixmap pixmap(swatch->size() * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(color);
    swatch->setPixmap(pixmap);
}

/// The color that the user picks; an invalid one when the picker is canceled or destroyed with
/// @p parent.
QColor pick_color(const QColor& initial, QWidget* parent) {
    ModalDialog<QColorDialog> picker(parent);
    picker->setCurrentColor(initial);
    return picker.run() ? picker->selectedColor() : QColor();
}

} // namespace

kscolorDlgBase::kscolorDlgBase(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags)
    : FormDialog(parent, name, modal, flags), ui_(std::make_unique<Ui::kscolorDlgBase>()) {
    ui_->setupUi(this);
    lbTextColor = ui_->lbTextColor;
    Frame7 = ui_->Frame7;
    imgTextColor = ui_->imgTextColor;
    btnTextColorBrw = ui_->btnTextColorBrw;
    lbBGColor = ui_->lbBGColor;
    Frame8 = ui_->Frame8;
    imgBGColor = ui_->imgBGColor;
    btnBGColorBrw = ui_->btnBGColorBrw;
    btnOK = ui_->btnOK;
    btnCancel = ui_->btnCancel;
}

kscolorDlgBase::~kscolorDlgBase() = default;

void kscolorDlgBase::languageChange() {
    ui_->retranslateUi(this);
}

KSColorDlg::KSColorDlg(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags)
    : kscolorDlgBase(parent, name, modal, flags) {
    connect(btnOK, &QPushButton::clicked, this, &KSColorDlg::btnOK_clicked);
    connect(btnCancel, &QPushButton::clicked, this, &KSColorDlg::btnCancel_clicked);
    connect(btnTextColorBrw, &QPushButton::clicked, this, &KSColorDlg::btnTextColorBrw_clicked);
    connect(btnBGColorBrw, &QPushButton::clicked, this, &KSColorDlg::btnBGColorBrw_clicked);
    load_screencolor();
    paint_swatches();
    // The layout gives the swatches their size when the dialog is shown.
    imgTextColor->installEventFilter(this);
    imgBGColor->installEventFilter(this);
    fix_size();
}

void KSColorDlg::load_screencolor() {
    const ScreenColors colors = read_screen_colors();
    background_color = colors.page;
    text_color = colors.text;
}

void KSColorDlg::save_screencolor() {
    save_color("KRV_COLOR_SBG", background_color);
    save_color("KRV_COLOR_DBG", text_color);
}

void KSColorDlg::btnOK_clicked() {
    save_screencolor();
    accept();
}

void KSColorDlg::btnCancel_clicked() {
    reject();
}

void KSColorDlg::btnTextColorBrw_clicked() {
    const QColor picked = pick_color(text_color, this);
    if (!picked.isValid())
        return;
    text_color = picked;
    paint_swatch(imgTextColor, text_color);
}

void KSColorDlg::btnBGColorBrw_clicked() {
    const QColor picked = pick_color(background_color, this);
    if (!picked.isValid())
        return;
    background_color = picked;
    paint_swatch(imgBGColor, background_color);
}

bool KSColorDlg::eventFilter(QObject* watched, QEvent* event) {
    const bool handled = kscolorDlgBase::eventFilter(watched, event);
    if (event->type() == QEvent::Resize)
        paint_swatches();
    return handled;
}

void KSColorDlg::paint_swatches() {
    paint_swatch(imgTextColor, text_color);
    paint_swatch(imgBGColor, background_color);
}
