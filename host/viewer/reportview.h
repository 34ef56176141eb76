#pragma once

#include "host/files/outcome.h"
#include "host/printers/hostprinters.h"

#include <QString>
#include <QWidget>

#include <memory>

class CPrintMan;
class QScrollView;

namespace host {

/// A direction and distance to scroll.
enum class Scroll { line_up, line_down, left, right, screen_up, screen_down, top };

/// A report and the library's view of it: one page at a time, at a zoom, with its selection.
///
/// When a page or a zoom cannot be shown, what is shown stays as it is.
class ReportView : public QWidget {
    Q_OBJECT

public:
    explicit ReportView(QByteArray path);
    ~ReportView() override;

    /// The name of the zoom when none was chosen, and the name that open() takes for a fitted page.
    static QString default_zoom();
    static QString fit_name();

    /// Opens the report and shows its first page at the zoom of that name, the default one for an
    /// unknown name, or fitted where there is not enough memory for that. On failure nothing is
    /// shown.
    Outcome open(const QString& zoom);

    /// The name of the report's file, as it was given and as an absolute one.
    const QByteArray& path() const { return path_; }
    QByteArray absolute_path() const;

    CPrintMan& manager() { return *manager_; }
    int columns() const;
    int lines() const;
    int page() const { return page_; }
    int pages() const;

    /// Shows another page, from its top.
    Outcome show_page(int page);

    /// Shows the page again, in the colours of the settings.
    void refresh();

    /// Shows the page in the font that the library's dialog has set, fitted when there is not
    /// enough memory for it at the current zoom.
    ///
    /// @param shown receives the outcome
    /// @return the font at 100 %
    QFont take_font(Outcome& shown);

    /// Hands the printers to the library, unless it has these already.
    ///
    /// @return false when it has others, which it keeps
    bool offer_printers(const HostPrinters& printers);

    /// The name of the zoom, such as "150%"; of a fitted page, the one that it would return to.
    const QString& zoom() const { return zoom_; }
    bool fits() const { return fits_; }

    /// The argument of open() that shows a report in the same way.
    QString zoom_or_fit() const { return fits_ ? fit_name() : zoom_; }

    /// Shows the page at another zoom, with the same place in the middle.
    Outcome set_zoom(const QString& name);

    /// Fits the page to the view, also when its size changes.
    Outcome fit();

    /// The name of the zoom @p steps steps larger, or smaller when negative; empty when there is
    /// none.
    QString zoom_beside(int steps) const;

    void scroll(Scroll where);

    /// Gives the page the keyboard focus.
    void take_keyboard();

    /// The number of pieces of text that are selected or found, and of their characters.
    int selected_pieces() const;
    int selected_characters() const;

    /// Whether the file is still the one that was opened, with the same content.
    bool is_unchanged() const;

    /// The size that shows the whole page without scrolling.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void selection_changed();

    /// The action of a key of the page failed.
    ///
    /// @param error in one line
    void key_failed(const QString& error);

    /// The user turned the wheel with Ctrl: one step larger (1) or smaller (-1).
    void zoom_wanted(int step);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Stamp;
    struct Middle;

    void make_view();
    void watch_screen();
    Outcome show_at(const QString& zoom, bool fits);
    bool apply(const QString& zoom, bool fits);
    Outcome page_problem(int page) const;
    Middle middle() const;
    void restore(const Middle& middle);
    void add_scroll_keys();

    QByteArray path_;
    std::unique_ptr<Stamp> stamp_;
    std::unique_ptr<CPrintMan> manager_;
    HostPrinters offered_;
    QScrollView* scroll_ = nullptr;
    QString zoom_;
    bool fits_ = false;
    int page_ = 1;
    int wheel_ = 0; ///< its rotation since the last step, in eighths of a degree
};

} // namespace host
