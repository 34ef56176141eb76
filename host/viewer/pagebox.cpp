#include "host/viewer/pagebox.h"

#include "host/viewer/texts.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTimer>

namespace host {

PageBox::PageBox(QWidget* parent) : QLineEdit(parent) {
    setAlignment(Qt::AlignCenter);
    setAccessibleName(tr("Page"));
    set_page(0, 0);
}

void PageBox::set_page(int page, int pages) {
    page_ = page;
    pages_ = pages;
    show_page();
    const QString widest = page_text(std::max(pages, 100), std::max(pages, 100));
    QStyleOptionFrame option;
    initStyleOption(&option);
    const int padding = 2 * fontMetrics().horizontalAdvance(u'0');
    const QSize text(fontMetrics().horizontalAdvance(widest) + padding, fontMetrics().height());
    setFixedWidth(style()->sizeFromContents(QStyle::CT_LineEdit, &option, text, this).width());
}

void PageBox::show_page() {
    setText(pages_ > 0 ? page_text(page_, pages_) : QString());
    if (hasFocus())
        selectAll();
}

void PageBox::choose() {
    const auto page = parse_page(text());
    if (page && *page >= 1 && *page <= pages_) {
        emit left();
        emit page_chosen(*page);
        return;
    }
    emit refused(page ? tr("There is no page %1; the report has %2.").arg(*page).arg(pages_)
                      : tr("Type the number of a page, from 1 to %1.").arg(pages_));
    selectAll();
}

void PageBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    // The click that sets the focus moves the cursor afterwards.
    if (event->reason() == Qt::MouseFocusReason)
        QTimer::singleShot(0, this, &QLineEdit::selectAll);
    else
        selectAll();
}

void PageBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        show_page();
}

void PageBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        choose();
    } else if (event->key() == Qt::Key_Escape) {
        show_page();
        emit left();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

} // namespace host
