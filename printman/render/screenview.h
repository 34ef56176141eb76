#pragma once

#include <printman/render/screensettings.h>
#include <printman/report/reportbuffer.h>

#include <QFont>
#include <QPixmap>
#include <QPointer>
#include <QSize>

#include <memory>

class CPrintMan;
class CScreen;
class QPainter;
class QScrollView;
class QWidget;

namespace printman {

class PageRows;
class PageUnits;

/// The page on screen: a scroll view with the screen widget in it, the image of the page that the
/// widget shows, and how the page is laid out: font, zoom, preview and colors.
///
/// The widgets belong to the host's window; once that is gone, nothing here has any effect. All
/// sizes and positions are in logical pixels; the image has the screen's device pixels.
class ScreenView {
public:
    explicit ScreenView(PageUnits& units) : units_(units) {}
    ~ScreenView();
    ScreenView(const ScreenView&) = delete;
    ScreenView& operator=(const ScreenView&) = delete;

    ScreenColors colors;
    bool preview = false; ///< the whole page fits the view
    int zoom = 100;       ///< in percent, kept during preview; 0 leaves the font size unchanged

    /// Sets the font, at the size that zooming scales. It is fully hinted, so that characters are
    /// as wide as their cells to the pixel and fields that end in the last column end at the edge.
    void set_font(const QFont& font);

    /// Creates the widgets on first use and gives the screen widget the size of the page: outside
    /// preview the smallest sheet with the paper's aspect ratio that holds the text, with a margin
    /// of 20 pixels around it; in preview the largest one that fits into the view less 30 pixels,
    /// centred. The view then shows the top left of the page, and the screen widget has the
    /// keyboard focus.
    ///
    /// @param owner  receives the widget's signals and paints it
    /// @param parent parent of the view; null keeps that of an earlier call
    /// @param size   size of the view; likewise
    /// @param font   passed to set_font(); likewise
    /// @param grid   the page's columns and lines, which are known
    /// @param paper  size of the paper, in any unit
    /// @return false, with nothing created, when there is no view and neither a parent nor a
    ///         size is known for one, or when the parent of an earlier call is gone
    bool lay_out(CPrintMan* owner, QWidget* parent, const QSize* size, const QFont* font,
                 PageGeometry grid, QSize paper);

    /// Resizes the view, if there is one, and remembers the size.
    ///
    /// @return whether there is one
    bool resize(QSize size);

    QScrollView* scroll() const;
    CScreen* screen() const;

    /// Creates the image of an empty sheet in the screen widget's size and opens @p p on it with
    /// font, logical units and pen set, ready to draw the items of @p rows, whose page has the
    /// columns and lines of @p grid.
    ///
    /// @return false, with no image, without a screen widget, when there is no memory for an
    ///         image of that size, or when it would exceed 32,767 pixels in either direction or
    ///         512 MiB
    bool begin_page(QPainter& p, PageGeometry grid, const PageRows& rows);

    /// Whether the image is that of the page that @p rows hold now.
    bool shows(const PageRows& rows) const;

    /// Opens @p p on the image to change it, with font and logical units as begin_page() sets them.
    ///
    /// @return false when there is no image
    bool begin_change(QPainter& p);

    /// Shows the image immediately.
    void show_image();

    /// Draws the image on @p widget, within its paint event, with a dark surround.
    void paint_on(QWidget& widget) const;

    /// Whether the image was made for a screen with another device pixel ratio than the widget has
    /// now.
    bool is_outdated() const;

    const QPixmap* image() const { return image_.get(); }

    /// How the image was painted.
    struct Painted {
        PageGeometry grid; ///< of its page
        int margin = 0;    ///< pixels around its sheet
        ScreenColors colors;
        QSize size;         ///< of the screen widget
        unsigned loads = 0; ///< PageRows::loads() of the rows that it shows
    };
    const Painted& painted() const { return painted_; }

    /// Scrolls a position into view, with 50 pixels around it.
    void ensure_visible(QPoint at);

private:
    bool may_make_widgets(const QSize* size) const;
    void make_widgets(CPrintMan* owner);
    void set_screen_font();
    int margin() const;
    QSize sheet_size(PageGeometry grid, QSize paper) const;
    bool make_image();
    void begin(QPainter& p);

    PageUnits& units_;
    QPointer<QWidget> parent_;
    bool had_parent_ = false;
    QSize size_;
    QPointer<QScrollView> scroll_;
    QPointer<CScreen> screen_;
    std::unique_ptr<QPixmap> image_;
    Painted painted_;
    QFont font_;
    int base_point_size_ = 0;
};

} // namespace printman
