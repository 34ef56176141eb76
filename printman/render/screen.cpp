#include "ui_screenviewbase.h"

#include <printman/printman.h>
#include <printman/render/screen.h>

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

CScreen::CScreen(CPrintMan* owner, QWidget* parent, const char* name)
    : QWidget(parent), owner_(owner) {
    setObjectName(QString::fromLatin1(name));
    setFocusPolicy(Qt::StrongFocus);
    // The page image covers all of it.
    setAttribute(Qt::WA_OpaquePaintEvent);
    if (!owner)
        return;
    connect(this, &CScreen::mouse_press, owner, &CPrintMan::mouse_press);
    connect(this, &CScreen::mouse_release, owner, &CPrintMan::mouse_release);
    connect(this, &CScreen::mouse_move, owner, &CPrintMan::mouse_move);
    connect(this, &CScreen::search_text, owner, &CPrintMan::search_text);
    connect(this, &CScreen::copy_text, owner, &CPrintMan::copy_text);
    connect(this, &CScreen::paste_text, owner, &CPrintMan::paste_text);
}

CScreen::~CScreen() = default;

void CScreen::paintEvent(QPaintEvent* /*event*/) {
    if (owner_)
        owner_->repaint_rpt_page(this);
    else
        QPainter(this).fillRect(rect(), palette().window());
}

void CScreen::mousePressEvent(QMouseEvent* event) {
    emit mouse_press(event->position().toPoint());
}

void CScreen::mouseMoveEvent(QMouseEvent* event) {
    emit mouse_move(event->position().toPoint());
}

void CScreen::mouseReleaseEvent(QMouseEvent* event) {
    emit mouse_release(event->position().toPoint());
}

void CScreen::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers() != Qt::ControlModifier)
        return;
    if (event->key() == Qt::Key_F)
        emit search_text();
    else if (event->key() == Qt::Key_C)
        emit copy_text();
    else if (event->key() == Qt::Key_V)
        emit paste_text();
}

ScreenViewBase::ScreenViewBase(QWidget* parent, const char* name, Qt::WindowFlags flags)
    : QWidget(parent, flags) {
    Ui::ScreenViewBase().setupUi(this);
    if (name)
        setObjectName(QString::fromLatin1(name));
    resize(size().expandedTo(minimumSizeHint()));
}

ScreenViewBase::~ScreenViewBase() = default;

void ScreenViewBase::languageChange() {
    Ui::ScreenViewBase().retranslateUi(this);
}

void ScreenViewBase::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        languageChange();
    QWidget::changeEvent(event);
}
