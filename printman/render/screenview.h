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
/// The widgets belong to the host's window; when it goes everything here has no effect any more.
/// All sizes and places are in logical pixels; the image has the screen's device pixels.
class ScreenView {
public:
    explicit ScreenView(PageUnits& units) : units_(units) {}
    ~ScreenView();
    ScreenView(const ScreenView&) = delete;
    ScreenView& operator=(const ScreenView&) = delete;

    ScreenColors colors;
    bool preview = false; ///< the whole page fits the view
    int zoom = 100;       ///< in percent, kept during preview; 0 leaves the font's size

    /// Sets the font and the size that zooming scales. It is hinted fully: characters then are as
    /// wide as their cells to the pixel, and fields that end in the last column end there.
    void set_font(const QFont& font);

    /// Makes the widgets on first use and gives the screen widget the size of the page: outside
    /// preview the smallest sheet of the paper's shape that holds the text, with a margin of 20
    /// pixels about it; in preview the largest that fits the view less 30 pixels, centred. The view
    /// then shows the top left of the page, and the screen widget has the keyboard.
    ///
    /// @param owner  receives the widget's signals and paints it
    /// @param parent where the view is made; replaces that of an earlier call unless null
    /// @param size   of the view; likewise
    /// @param font   likewise, as set_font()
    /// @param grid   the page's columns and lines, known
    /// @param paper  size of the paper, in any unit
    /// @return false, and nothing is made, when there is no view and neither a parent nor a size
    ///         says what for, or when the parent of an earlier call is gone
    bool lay_out(CPrintMan* owner, QWidget* parent, const QSize* size, const QFont* font,
                 PageGeometry grid, QSize paper);

    /// Resizes the view, if there is one, and remembers the size.
    ///
    /// @return whether there is one
    bool resize(QSize size);

    QScrollView* scroll() const;
    CScreen* screen() const;

    /// Makes the image of an empty sheet in the screen widget's size and opens @p p on it, ready
    /// to draw the items of @p rows, whose page has the columns and lines of @p grid: font, logical
    /// units and pen are set.
    ///
    /// @return false without a screen widget, or when there is no memory for an image of that size
    ///         (its side is limited to 32,767 pixels and the whole to 512 MiB); there is no image
    ///         then
    bool begin_page(QPainter& p, PageGeometry grid, const PageRows& rows);

    /// Whether the image is that of the page that @p rows hold now.
    bool shows(const PageRows& rows) const;

    /// Opens @p p on the image to change what is there, with font and logical units as
    /// begin_page() set them.
    ///
    /// @return false when there is no image
    bool begin_change(QPainter& p);

    /// Shows the image at once.
    void show_image();

    /// Draws the image on @p widget, in its paint event, on a dark surround.
    void paint_on(QWidget& widget) const;

    /// Whether the screen widget has other device pixels than the image, which was made for
    /// another screen.
    bool is_outdated() const;

    const QPixmap* image() const { return image_.get(); }

    /// How the image was painted: the grid of its page, the pixels about its sheet, its colors.
    struct Painted {
        PageGeometry grid;
        int margin = 0;
        ScreenColors colors;
        QSize size;         ///< of the screen widget
        unsigned loads = 0; ///< which load of the rows it shows
    };
    const Painted& painted() const { return painted_; }

    /// Scrolls so that a place is seen, with 50 pixels about it.
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
