#include "host/viewer/reportview.h"

#include "host/files/inputfile.h"
#include "host/files/paths.h"
#include "host/jobs/openreport.h"
#include "host/jobs/reportfont.h"
#include "host/viewer/screenfontsettings.h"

#include <printman/printman.h>
#include <printman/render/screen.h>
#include <printman/toolkit/qscrollview.h>

#include <QResizeEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QStringList>
#include <QWheelEvent>

#include <algorithm>
#include <sys/stat.h>

namespace host {

namespace {

constexpr int wheel_step = 120; // eighths of a degree
constexpr int show_current = 0;
constexpr int min_width = 200;
constexpr int min_height = 150;

} // namespace

/// Identifies a file and its content.
struct ReportView::Stamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    timespec changed{};

    static Stamp of(const QByteArray& path) {
        struct stat status {};
        if (::stat(path.constData(), &status) != 0)
            return {};
        return {status.st_dev, status.st_ino, status.st_size, status.st_mtim};
    }

    bool operator==(const Stamp& other) const {
        return device == other.device && inode == other.inode && size == other.size &&
               changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
    }
};

/// The place in the middle of the view, as fractions of the page.
struct ReportView::Middle {
    double x = 0;
    double y = 0;
};

QString ReportView::default_zoom() {
    return QStringLiteral("100%");
}

QString ReportView::fit_name() {
    return QStringLiteral("fit");
}

ReportView::ReportView(QByteArray path)
    : path_(std::move(path)), stamp_(std::make_unique<Stamp>()),
      manager_(std::make_unique<CPrintMan>()) {
    add_scroll_keys();
}

ReportView::~ReportView() {
    // The library's widgets need their manager.
    delete scroll_;
}

QSize ReportView::sizeHint() const {
    const auto* screen = scroll_ ? scroll_->findChild<CScreen*>() : nullptr;
    if (!screen)
        return QWidget::sizeHint();
    const int frame = 2 * scroll_->frameWidth();
    const int bar = scroll_->verticalScrollBar()->sizeHint().width();
    return screen->size() + QSize(frame + bar, frame + bar);
}

QSize ReportView::minimumSizeHint() const {
    return {min_width, min_height};
}

QByteArray ReportView::absolute_path() const {
    return host::absolute_path(path_);
}

Outcome ReportView::open(const QString& zoom) {
    *stamp_ = Stamp::of(path_);
    Outcome opened = open_report(*manager_, path_);
    if (!opened.ok())
        return opened;
    make_view();
    if (!scroll_)
        return Outcome::failure(path_ + ": The page cannot be shown");
    const bool known = manager_->zoom_ratio_names().contains(zoom);
    const QString wanted = known ? zoom : default_zoom();
    const bool fits = zoom == fit_name();
    if (!apply(wanted, fits) && (fits || !apply(default_zoom(), true)))
        return Outcome::failure(path_ + ": There is not enough memory to show a page");
    return show_page(1);
}

void ReportView::make_view() {
    if (settings_have_font())
        manager_->load_screenfont();
    const QFont font = screen_font();
    const QSize room = size();
    manager_->init_rpt_view(this, &room, settings_have_font() ? nullptr : &font);
    scroll_ = findChild<QScrollView*>();
    if (scroll_)
        watch_screen();
}

void ReportView::watch_screen() {
    scroll_->viewport()->installEventFilter(this);
    auto* screen = scroll_->findChild<CScreen*>();
    screen->installEventFilter(this);
    // These are connected after the library's own slots, which change the selection first.
    connect(screen, &CScreen::mouse_press, this, &ReportView::selection_changed);
    connect(screen, &CScreen::mouse_move, this, &ReportView::selection_changed);
    connect(screen, &CScreen::mouse_release, this, &ReportView::selection_changed);
    connect(screen, &CScreen::paste_text, this, [this] {
        if (!manager_->last_job_ok())
            emit key_failed(manager_->last_job_error());
    });
}

int ReportView::columns() const {
    return manager_->get_columns();
}

int ReportView::lines() const {
    return manager_->get_lines();
}

int ReportView::pages() const {
    return manager_->get_page_count();
}

Outcome ReportView::page_problem(int page) const {
    if (page == manager_->get_cur_page())
        return Outcome::failure("There is not enough memory to show it");
    Outcome readable = check_input(path_);
    if (!readable.ok())
        return readable;
    return Outcome::failure(path_ + ": Page " + QByteArray::number(page) +
                            " cannot be read; the file has changed since it was opened");
}

Outcome ReportView::show_page(int page) {
    const bool shown = manager_->goto_rpt_page(page) == 1;
    page_ = manager_->get_cur_page();
    if (shown)
        scroll(Scroll::top);
    emit selection_changed();
    return shown ? Outcome::success() : page_problem(page);
}

void ReportView::refresh() {
    manager_->show_rpt_page(show_current);
}

QFont ReportView::take_font(Outcome& shown) {
    const Middle before = middle();
    auto* screen = findChild<CScreen*>();
    // Only the screen widget knows the font, and only at 100 % has it the font's own size.
    screen->setUpdatesEnabled(false);
    manager_->zoom_rpt_page(default_zoom());
    QFont font = screen->font();
    screen->setUpdatesEnabled(true);
    const bool can_show = apply(zoom_, fits_) || apply(zoom_, true);
    restore(before);
    emit selection_changed();
    shown = can_show ? Outcome::success()
                     : Outcome::failure("There is not enough memory for a page in this font");
    return font;
}

bool ReportView::offer_printers(const HostPrinters& printers) {
    if (offered_.same_as(printers))
        return true;
    if (!offered_.empty())
        return false;
    printers.hand_to(*manager_);
    offered_ = printers;
    return true;
}

bool ReportView::apply(const QString& zoom, bool fits) {
    // In preview this is the ratio for leaving it.
    const int shown = fits ? manager_->zoomout() : manager_->zoom_rpt_page(zoom);
    if (shown != 1)
        return false;
    fits_ = fits;
    zoom_ = zoom;
    return true;
}

Outcome ReportView::show_at(const QString& zoom, bool fits) {
    const Middle before = middle();
    const QString old_zoom = zoom_;
    const bool old_fits = fits_;
    const bool shown = apply(zoom, fits);
    if (!shown)
        apply(old_zoom, old_fits);
    restore(before);
    emit selection_changed();
    return shown ? Outcome::success()
                 : Outcome::failure("There is not enough memory for a page at " +
                                    (fits ? QByteArray("this size") : zoom.toLatin1()));
}

Outcome ReportView::set_zoom(const QString& name) {
    return show_at(name, false);
}

Outcome ReportView::fit() {
    return show_at(zoom_, true);
}

QString ReportView::zoom_beside(int steps) const {
    if (fits_)
        return steps > 0 ? zoom_ : QString();
    const QStringList names = manager_->zoom_ratio_names();
    return names.value(names.indexOf(zoom_) + steps);
}

ReportView::Middle ReportView::middle() const {
    const auto part = [](const QScrollBar* bar) {
        const int whole = bar->maximum() + bar->pageStep();
        return bar->maximum() <= 0 ? 0 : (bar->value() + bar->pageStep() / 2.0) / whole;
    };
    return {part(scroll_->horizontalScrollBar()), part(scroll_->verticalScrollBar())};
}

void ReportView::restore(const Middle& middle) {
    const auto put = [](QScrollBar* bar, double part) {
        const int whole = bar->maximum() + bar->pageStep();
        bar->setValue(static_cast<int>(part * whole - bar->pageStep() / 2.0));
    };
    put(scroll_->horizontalScrollBar(), middle.x);
    put(scroll_->verticalScrollBar(), middle.y);
}

void ReportView::scroll(Scroll where) {
    QScrollBar* vertical = scroll_->verticalScrollBar();
    QScrollBar* horizontal = scroll_->horizontalScrollBar();
    switch (where) {
    case Scroll::line_up:
        return vertical->triggerAction(QAbstractSlider::SliderSingleStepSub);
    case Scroll::line_down:
        return vertical->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    case Scroll::left:
        return horizontal->triggerAction(QAbstractSlider::SliderSingleStepSub);
    case Scroll::right:
        return horizontal->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    case Scroll::screen_up:
        return vertical->triggerAction(QAbstractSlider::SliderPageStepSub);
    case Scroll::screen_down:
        return vertical->triggerAction(QAbstractSlider::SliderPageStepAdd);
    case Scroll::top:
        return vertical->setValue(0);
    }
}

void ReportView::add_scroll_keys() {
    const std::initializer_list<std::pair<QKeySequence, Scroll>> keys{
        {Qt::Key_Up, Scroll::line_up},        {Qt::Key_Down, Scroll::line_down},
        {Qt::Key_Left, Scroll::left},         {Qt::Key_Right, Scroll::right},
        {Qt::Key_Space, Scroll::screen_down}, {Qt::SHIFT | Qt::Key_Space, Scroll::screen_up},
    };
    for (const auto& [key, where] : keys) {
        auto* shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, to = where] { scroll(to); });
    }
}

void ReportView::take_keyboard() {
    if (auto* screen = scroll_->findChild<CScreen*>())
        screen->setFocus();
}

int ReportView::selected_pieces() const {
    return static_cast<int>(manager_->hilights().size());
}

int ReportView::selected_characters() const {
    int characters = 0;
    for (const StringItem& piece : manager_->hilights())
        characters += static_cast<int>(piece.text.size());
    return characters;
}

bool ReportView::is_unchanged() const {
    return *stamp_ == Stamp::of(path_);
}

bool ReportView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Wheel)
        return QWidget::eventFilter(watched, event);
    const auto* wheel = static_cast<QWheelEvent*>(event);
    if (!wheel->modifiers().testFlag(Qt::ControlModifier)) {
        wheel_ = 0;
        return QWidget::eventFilter(watched, event);
    }
    wheel_ += wheel->angleDelta().y();
    const int steps = wheel_ / wheel_step;
    wheel_ %= wheel_step;
    if (steps != 0)
        emit zoom_wanted(std::clamp(steps, -1, 1));
    event->accept();
    return true;
}

void ReportView::resizeEvent(QResizeEvent* event) {
    manager_->resize(event->size());
    // A page that is fitted again loses its selection.
    emit selection_changed();
    QWidget::resizeEvent(event);
}

} // namespace host
