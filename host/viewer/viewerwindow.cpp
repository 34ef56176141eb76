#include "host/viewer/viewerwindow.h"

#include "host/viewer/helpwindow.h"
#include "host/viewer/icons.h"
#include "host/viewer/pagebox.h"
#include "host/viewer/reportview.h"
#include "host/viewer/texts.h"
#include "host/viewer/zoombox.h"

#include <printman/printman.h>
#include <printman/render/zoom.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

namespace host {

namespace {

constexpr double screen_part = 0.9;

QLabel* status_label() {
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(6, 0, 6, 0);
    return label;
}

} // namespace

QByteArray dropped_file(const QList<QUrl>& urls) {
    for (const QUrl& url : urls) {
        // A name is bytes, which need not be text.
        QByteArray path = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
        if (url.isLocalFile() && path.startsWith('/') && !path.contains('\0'))
            return path;
    }
    return {};
}

ViewerWindow::ViewerWindow(ViewerState state)
    : state_(std::move(state)), actions_(*this), tools_(addToolBar(tr("&Tool Bar"))),
      geometry_text_(status_label()), selection_text_(status_label()), page_text_(status_label()) {
    setWindowIcon(window_icon());
    setAcceptDrops(true);
    make_parts();
    connect_actions();
    connect_boxes();
    update_all();
}

ViewerWindow::~ViewerWindow() = default;

void ViewerWindow::make_parts() {
    page_box_ = new PageBox;
    zoom_box_ = new ZoomBox(printman::zoom_names());
    tools_->setObjectName(QStringLiteral("toolbar"));
    tools_->setMovable(false);
    actions_.add_tools(*tools_, page_box_, zoom_box_);
    setTabOrder(page_box_, zoom_box_);
    statusBar()->addWidget(geometry_text_);
    statusBar()->addWidget(selection_text_);
    statusBar()->addPermanentWidget(page_text_);
    auto* status_shown = new QAction(tr("&Status Bar"), this);
    status_shown->setCheckable(true);
    status_shown->setChecked(true);
    connect(status_shown, &QAction::toggled, statusBar(), &QWidget::setVisible);
    actions_.add_menus(*this, {tools_->toggleViewAction(), status_shown});
    tools_->setVisible(state_.shows("toolbar"));
    status_shown->setChecked(state_.shows("statusbar"));
}

void ViewerWindow::connect_actions() {
    const auto on = [this](QAction* action, auto what) {
        connect(action, &QAction::triggered, this, what);
    };
    on(actions_.open, [this] { ask_open(); });
    on(actions_.reload, [this] { open_or_tell(view_->path(), view_->page()); });
    on(actions_.save_page, [this] {
        save_page(ask_name(tr("Save Page as Text"), tr(" page %1").arg(view_->page()),
                           QStringLiteral("txt"), tr("Text files (*.txt)")));
    });
    on(actions_.save_report, [this] {
        save_report(ask_name(tr("Save Report as Text"), QString(), QStringLiteral("txt"),
                             tr("Text files (*.txt)")));
    });
    on(actions_.export_pdf, [this] {
        export_pdf(
            ask_name(tr("Export PDF"), QString(), QStringLiteral("pdf"), tr("PDF files (*.pdf)")));
    });
    on(actions_.print_page, [this] { print_page(); });
    on(actions_.print_report, [this] { print_report(); });
    on(actions_.destination, [this] { ask_destination(); });
    on(actions_.quit, [this] { close(); });
    on(actions_.copy, [this] { view_->manager().save_to_clipboard(); });
    on(actions_.copy_report, [this] { copy_report(); });
    on(actions_.find, [this] {
        view_->manager().search_text();
        update_selection();
    });
    on(actions_.zoom_in, [this] { zoom_by(1); });
    on(actions_.zoom_out, [this] { zoom_by(-1); });
    on(actions_.zoom_usual,
       [this] { note(tr("The zoom stays as it is."), view_->set_zoom(ReportView::usual_zoom())); });
    on(actions_.fit, [this] {
        note(tr("The zoom stays as it is."),
             view_->fits() ? view_->set_zoom(view_->zoom()) : view_->fit());
    });
    on(actions_.colours, [this] { change_colours(); });
    on(actions_.first, [this] { show_page(1); });
    on(actions_.previous, [this] { show_page(view_->page() - 1); });
    on(actions_.next, [this] { show_page(view_->page() + 1); });
    on(actions_.last, [this] { show_page(view_->pages()); });
    on(actions_.go_to, [this] { page_box_->setFocus(Qt::ShortcutFocusReason); });
    on(actions_.help, [this] { show_help(); });
    connect(actions_.recent, &QMenu::aboutToShow, this, &ViewerWindow::fill_recent);
}

void ViewerWindow::connect_boxes() {
    const auto back_to_page = [this] { view_->take_keyboard(); };
    connect(page_box_, &PageBox::page_chosen, this, &ViewerWindow::show_page);
    connect(page_box_, &PageBox::left, this, back_to_page);
    connect(page_box_, &PageBox::refused, this,
            [this](const QString& why) { statusBar()->showMessage(why, 5000); });
    connect(zoom_box_, &ZoomBox::zoom_chosen, this, [this](const QString& name) {
        note(tr("The zoom stays as it is."), view_->set_zoom(name));
        view_->take_keyboard();
    });
    connect(zoom_box_, &ZoomBox::fit_chosen, this, [this] {
        note(tr("The zoom stays as it is."), view_->fit());
        view_->take_keyboard();
    });
    connect(zoom_box_, &ZoomBox::left, this, back_to_page);
}

void ViewerWindow::connect_view() {
    connect(view_, &ReportView::selection_changed, this, &ViewerWindow::update_selection);
    connect(view_, &ReportView::zoom_wanted, this, &ViewerWindow::zoom_by);
    connect(view_, &ReportView::key_failed, this, [this](const QString& why) {
        tell(tr("The clipboard was not shown in the browser."),
             Outcome::failure(QFile::encodeName(why)));
    });
}

Outcome ViewerWindow::open(const QByteArray& path, int page) {
    auto fresh = std::make_unique<ReportView>(path);
    const QString zoom = view_ ? view_->zoom_or_fit() : state_.zoom();
    if (view_)
        fresh->resize(view_->size());
    Outcome opened = fresh->open(zoom);
    if (opened.ok() && page > 1)
        opened = fresh->show_page(std::min(page, fresh->pages()));
    if (!opened.ok())
        return opened;
    const bool first = !view_;
    view_ = fresh.release();
    setCentralWidget(view_);
    connect_view();
    if (first)
        restore_state();
    view_->take_keyboard();
    state_.add_recent(view_->absolute_path());
    update_all();
    return opened;
}

bool ViewerWindow::open_or_tell(const QByteArray& path, int page) {
    if (busy_)
        return true;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    Outcome opened = open(path, page);
    QApplication::restoreOverrideCursor();
    tell(tr("The report cannot be opened."), opened);
    return opened.ok();
}

void ViewerWindow::restore_state() {
    const QRect room = screen()->availableGeometry();
    if (!restoreGeometry(state_.geometry())) {
        layout()->activate();
        resize(sizeHint().boundedTo(room.size() * screen_part));
    }
    resize(size().boundedTo(room.size()));
}

void ViewerWindow::keep_state() const {
    state_.keep_geometry(saveGeometry());
    state_.keep_shown("toolbar", tools_->toggleViewAction()->isChecked());
    state_.keep_shown("statusbar", !statusBar()->isHidden());
    if (view_)
        state_.keep_zoom(view_->zoom_or_fit());
}

void ViewerWindow::show_page(int page) {
    Outcome shown = view_->show_page(page);
    update_all();
    tell(tr("The page cannot be shown."), shown);
}

void ViewerWindow::zoom_by(int steps) {
    const QString zoom = view_->zoom_beside(steps);
    if (!zoom.isEmpty())
        note(tr("The zoom stays as it is."), view_->set_zoom(zoom));
}

void ViewerWindow::note(const QString& what, const Outcome& outcome) {
    update_all();
    tell(what, outcome);
}

void ViewerWindow::tell(const QString& what, const Outcome& outcome) {
    if (outcome.ok())
        return;
    QMessageBox box(QMessageBox::Warning, QCoreApplication::applicationName(),
                    what + QStringLiteral("\n\n") + QFile::decodeName(outcome.message),
                    QMessageBox::Ok, this);
    // What a file's name or a tool says is never markup.
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void ViewerWindow::update_all() {
    const int page = view_ ? view_->page() : 0;
    const int pages = view_ ? view_->pages() : 0;
    for (QAction* action :
         {actions_.reload, actions_.save_page, actions_.save_report, actions_.export_pdf,
          actions_.print_page, actions_.print_report, actions_.destination, actions_.copy_report,
          actions_.find, actions_.fit, actions_.colours, actions_.go_to})
        action->setEnabled(view_);
    page_box_->setEnabled(view_);
    zoom_box_->setEnabled(view_);
    actions_.first->setEnabled(page > 1);
    actions_.previous->setEnabled(page > 1);
    actions_.next->setEnabled(page < pages);
    actions_.last->setEnabled(page < pages);
    actions_.zoom_in->setEnabled(view_ && !view_->zoom_beside(1).isEmpty());
    actions_.zoom_out->setEnabled(view_ && !view_->zoom_beside(-1).isEmpty());
    actions_.zoom_usual->setEnabled(view_ &&
                                    (view_->fits() || view_->zoom() != ReportView::usual_zoom()));
    actions_.fit->setChecked(view_ && view_->fits());
    page_box_->set_page(page, pages);
    if (view_) {
        zoom_box_->set_zoom(view_->zoom(), view_->fits());
        geometry_text_->setText(geometry_text(view_->columns(), view_->lines(), pages));
        page_text_->setText(tr("Page %1").arg(page));
        QString name = short_name(view_->path());
        // This would be taken for the mark of a changed document.
        name.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
        setWindowTitle(tr("%1 \u2013 printman").arg(name));
    }
    update_selection();
}

void ViewerWindow::update_selection() {
    const int pieces = view_ ? view_->selected_pieces() : 0;
    actions_.copy->setEnabled(pieces > 0);
    selection_text_->setText(pieces > 0 ? selection_text(pieces, view_->selected_characters())
                                        : QString());
}

void ViewerWindow::fill_recent() {
    actions_.recent->clear();
    int number = 0;
    for (const QByteArray& file : state_.recent()) {
        QString name = short_name(file);
        name.replace(u'&', QStringLiteral("&&"));
        QAction* action =
            actions_.recent->addAction(QStringLiteral("&%1  %2").arg(++number % 10).arg(name));
        connect(action, &QAction::triggered, this, [this, file] {
            if (!open_or_tell(file))
                state_.remove_recent(file);
        });
    }
    if (number > 0)
        actions_.recent->addSeparator();
    QAction* forget = actions_.recent->addAction(tr("&Forget These"));
    forget->setEnabled(number > 0);
    connect(forget, &QAction::triggered, this, [this] { state_.clear_recent(); });
}

void ViewerWindow::closeEvent(QCloseEvent* event) {
    if (busy_) {
        event->ignore();
        return;
    }
    keep_state();
    event->accept();
}

void ViewerWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!busy_ && !QApplication::activeModalWidget() &&
        !dropped_file(event->mimeData()->urls()).isEmpty())
        event->acceptProposedAction();
}

void ViewerWindow::dropEvent(QDropEvent* event) {
    const QByteArray file = dropped_file(event->mimeData()->urls());
    event->acceptProposedAction();
    // Whoever dropped it waits until this returns.
    QTimer::singleShot(0, this, [this, file] { open_or_tell(file); });
}

} // namespace host
