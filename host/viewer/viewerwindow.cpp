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
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

namespace host {

namespace {

constexpr double max_screen_part = 0.9; // of the first window

QLabel* status_label() {
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(6, 0, 6, 0);
    return label;
}

} // namespace

QByteArray dropped_file(const QList<QUrl>& urls) {
    for (const QUrl& url : urls) {
        // A name need not be text.
        QByteArray path = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
        if (url.isLocalFile() && path.startsWith('/') && !path.contains('\0'))
            return path;
    }
    return {};
}

ViewerWindow::ViewerWindow(ViewerState state)
    : state_(std::move(state)), messages_(*this), unstored_(messages_), jobs_(*this, messages_),
      destination_({.window = *this,
                    .messages = messages_,
                    .jobs = jobs_,
                    .unstored = unstored_,
                    .reload = [this] { return reload(); }}),
      actions_(*this), tools_(addToolBar(tr("&Tool Bar"))), geometry_text_(status_label()),
      selection_text_(status_label()), page_text_(status_label()) {
    setWindowIcon(window_icon());
    setAcceptDrops(true);
    make_parts();
    connect_actions();
    connect_zoom_actions();
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
    on(actions_.reload, [this] { reload(); });
    on(actions_.save_page, [this] { jobs_.ask_save_page(); });
    on(actions_.save_report, [this] { jobs_.ask_save_report(); });
    on(actions_.export_pdf, [this] { jobs_.ask_export_pdf(); });
    on(actions_.print_page, [this] { jobs_.print_page(); });
    on(actions_.print_report, [this] { jobs_.print_report(); });
    on(actions_.destination, [this] { destination_.ask(); });
    on(actions_.quit, [this] { close(); });
    on(actions_.copy, [this] { view_->manager().save_to_clipboard(); });
    on(actions_.copy_report, [this] { jobs_.copy_report(); });
    on(actions_.find, [this] {
        view_->manager().search_text();
        update_selection();
    });
    on(actions_.colours, [this] { change_colours(); });
    on(actions_.first, [this] { show_page(1); });
    on(actions_.previous, [this] { show_page(view_->page() - 1); });
    on(actions_.next, [this] { show_page(view_->page() + 1); });
    on(actions_.last, [this] { show_page(view_->pages()); });
    on(actions_.go_to, [this] { page_box_->setFocus(Qt::ShortcutFocusReason); });
    on(actions_.help, [this] { show_help(); });
    connect(actions_.recent, &QMenu::aboutToShow, this, &ViewerWindow::fill_recent);
    connect(&destination_, &ReportDestination::view_changed, this, &ViewerWindow::update_all);
}

void ViewerWindow::connect_zoom_actions() {
    connect(actions_.zoom_in, &QAction::triggered, this, [this] { zoom_by(1); });
    connect(actions_.zoom_out, &QAction::triggered, this, [this] { zoom_by(-1); });
    connect(actions_.zoom_usual, &QAction::triggered, this,
            [this] { update_zoom(view_->set_zoom(ReportView::default_zoom())); });
    connect(actions_.fit, &QAction::triggered, this,
            [this] { update_zoom(view_->fits() ? view_->set_zoom(view_->zoom()) : view_->fit()); });
}

void ViewerWindow::connect_boxes() {
    const auto back_to_page = [this] { view_->take_keyboard(); };
    connect(page_box_, &PageBox::page_chosen, this, &ViewerWindow::show_page);
    connect(page_box_, &PageBox::left, this, back_to_page);
    connect(page_box_, &PageBox::refused, this,
            [this](const QString& error) { messages_.show(error); });
    connect(zoom_box_, &ZoomBox::zoom_chosen, this, [this](const QString& name) {
        update_zoom(view_->set_zoom(name));
        view_->take_keyboard();
    });
    connect(zoom_box_, &ZoomBox::fit_chosen, this, [this] {
        update_zoom(view_->fit());
        view_->take_keyboard();
    });
    connect(zoom_box_, &ZoomBox::left, this, back_to_page);
}

void ViewerWindow::connect_view() {
    connect(view_, &ReportView::selection_changed, this, &ViewerWindow::update_selection);
    connect(view_, &ReportView::zoom_wanted, this, &ViewerWindow::zoom_by);
    connect(view_, &ReportView::key_failed, this, [this](const QString& error) {
        messages_.report(tr("The clipboard was not shown in the browser."),
                         Outcome::failure(QFile::encodeName(error)));
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
    jobs_.set_view(*view_);
    destination_.set_view(*view_);
    setCentralWidget(view_);
    connect_view();
    if (first)
        restore_state();
    view_->take_keyboard();
    state_.add_recent(view_->absolute_path());
    update_all();
    return opened;
}

bool ViewerWindow::open_or_report(const QByteArray& path, int page) {
    if (jobs_.is_busy())
        return true;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    Outcome opened = open(path, page);
    QApplication::restoreOverrideCursor();
    messages_.report(tr("The report cannot be opened."), opened);
    return opened.ok();
}

bool ViewerWindow::reload() {
    return open_or_report(view_->path(), view_->page());
}

void ViewerWindow::restore_state() {
    const QRect room = screen()->availableGeometry();
    if (!restoreGeometry(state_.geometry())) {
        layout()->activate();
        resize(sizeHint().boundedTo(room.size() * max_screen_part));
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
    messages_.report(tr("The page cannot be shown."), shown);
}

void ViewerWindow::zoom_by(int steps) {
    const QString zoom = view_->zoom_beside(steps);
    if (!zoom.isEmpty())
        update_zoom(view_->set_zoom(zoom));
}

void ViewerWindow::update_zoom(const Outcome& changed) {
    update_all();
    messages_.report(tr("The zoom stays as it is."), changed);
}

void ViewerWindow::update_all() {
    update_actions();
    const int page = view_ ? view_->page() : 0;
    const int pages = view_ ? view_->pages() : 0;
    page_box_->set_page(page, pages);
    if (view_) {
        zoom_box_->set_zoom(view_->zoom(), view_->fits());
        geometry_text_->setText(geometry_text(view_->columns(), view_->lines(), pages));
        page_text_->setText(tr("Page %1").arg(page));
        QString name = short_name(view_->path());
        // "[*]" would be replaced by the mark of a changed document.
        name.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
        setWindowTitle(tr("%1 \u2013 printman").arg(name));
    }
    update_selection();
}

void ViewerWindow::update_actions() {
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
                                    (view_->fits() || view_->zoom() != ReportView::default_zoom()));
    actions_.fit->setChecked(view_ && view_->fits());
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
            if (!open_or_report(file))
                state_.remove_recent(file);
        });
    }
    if (number > 0)
        actions_.recent->addSeparator();
    QAction* forget = actions_.recent->addAction(tr("&Forget These"));
    forget->setEnabled(number > 0);
    connect(forget, &QAction::triggered, this, [this] { state_.clear_recent(); });
}

void ViewerWindow::ask_open() {
    const QString here =
        view_ ? QFileInfo(QFile::decodeName(view_->absolute_path())).path() : QString();
    const QString name = QFileDialog::getOpenFileName(this, tr("Open Report"), here,
                                                      tr("Reports (*.rpt);;All files (*)"));
    if (!name.isEmpty())
        open_or_report(QFile::encodeName(name));
}

void ViewerWindow::change_colours() {
    if (view_->manager().select_screencolor() == 1)
        view_->refresh();
    unstored_.report_once();
}

void ViewerWindow::show_help() {
    if (!help_) {
        help_ = new HelpWindow(this, key_texts(actions_));
        help_->setAttribute(Qt::WA_DeleteOnClose);
    }
    help_->show();
    help_->raise();
    help_->activateWindow();
}

void ViewerWindow::closeEvent(QCloseEvent* event) {
    if (jobs_.is_busy()) {
        event->ignore();
        return;
    }
    keep_state();
    event->accept();
}

void ViewerWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!jobs_.is_busy() && !QApplication::activeModalWidget() &&
        !dropped_file(event->mimeData()->urls()).isEmpty())
        event->acceptProposedAction();
}

void ViewerWindow::dropEvent(QDropEvent* event) {
    const QByteArray file = dropped_file(event->mimeData()->urls());
    event->acceptProposedAction();
    // The program that the file was dragged from waits until this function returns.
    QTimer::singleShot(0, this, [this, file] { open_or_report(file); });
}

} // namespace host
