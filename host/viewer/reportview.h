#pragma once

#include "host/files/outcome.h"
#include "host/printers/hostprinters.h"

#include <QString>
#include <QWidget>

#include <memory>

class CPrintMan;
class QScrollView;

namespace host {

/// Where to scroll.
enum class Scroll { line_up, line_down, left, right, screen_up, screen_down, top };

/// A report and the library's view of it: one page at a time, at a zoom, with its selection.
///
/// What is shown stays as it is when a page or a zoom cannot be shown.
class ReportView : public QWidget {
    Q_OBJECT

public:
    explicit ReportView(QByteArray path);
    ~ReportView() override;

    /// The zoom that there is when none was chosen, and what fitting the page is called beside it.
    static QString usual_zoom();
    static QString fit_name();

    /// The font of the page when the settings name none.
    static QFont usual_font();

    /// Reads the report and shows its first page at the zoom of that name, the usual one for an
    /// unknown name, or so that it fits where there is no memory for that.
    ///
    /// @return why not; there is nothing to see then
    Outcome open(const QString& zoom);

    /// The report's file as it was named, and with its directory.
    const QByteArray& path() const { return path_; }
    QByteArray absolute_path() const;

    CPrintMan& manager() { return *manager_; }
    int columns() const;
    int lines() const;
    int page() const { return page_; }
    int pages() const;

    /// Shows another page, its top first.
    Outcome show_page(int page);

    /// Shows the page anew, in the colours of the settings.
    void refresh();

    /// Shows the page in the font that the library has taken over, fitted when there is no memory
    /// for it at the zoom of now.
    ///
    /// @param shown receives why it is not shown
    /// @return the font at 100 %
    QFont take_font(Outcome& shown);

    /// Gives the printers to the library, unless it has these already.
    ///
    /// @return false when it has others, which it keeps
    bool offer_printers(const HostPrinters& printers);

    /// The zoom's name, "150%", also while the page is made to fit.
    const QString& zoom() const { return zoom_; }
    bool fits() const { return fits_; }

    /// What open() takes to show a report in the same way.
    QString zoom_or_fit() const { return fits_ ? fit_name() : zoom_; }

    /// Shows the page at another zoom, and what was in the middle stays there.
    Outcome set_zoom(const QString& name);

    /// Shows the whole page, and again whenever the window's size changes.
    Outcome fit();

    /// The zoom @p steps steps larger, smaller when negative; none when there is no more.
    QString zoom_beside(int steps) const;

    void scroll(Scroll where);

    /// Gives the page the keyboard.
    void take_keyboard();

    /// How many pieces are selected or found, and characters in them.
    int selected_pieces() const;
    int selected_characters() const;

    /// Whether the file is the one that was opened, with what it held then.
    bool is_unchanged() const;

    /// Room for the whole page without scrolling.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void selection_changed();

    /// A key of the page did not do what it does; @p why says so in one line.
    void key_failed(const QString& why);

    /// Ctrl and the wheel: one step larger (1) or smaller (-1).
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
    int wheel_ = 0; ///< turned, in eighths of a degree, since the last step
};

} // namespace host
