#pragma once

#include <QRect>
#include <QSize>

class QPainter;

namespace printman {

/// Page margins in inches.
struct PageMargins {
    double left = 0.0;
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;
};

/// The logical coordinate system in which a page is painted: a cell is as wide as the font's widest
/// character and as high as its line, and the grid of cells is scaled into the device's area.
class PageUnits {
public:
    PageMargins margins;
    bool no_page_map = false; ///< automatic page formatting is off: window and viewport stay
    double paper_width = 0.0;
    double paper_height = 0.0;

    /// Measures the painter's font and, unless @p keep or no_page_map is set, fits the grid's
    /// window into the painter's viewport less the margins, at its top left and with the grid's
    /// aspect ratio. If no room is left, the viewport is one pixel.
    ///
    /// @param columns,lines      the page's grid, both 1 or more
    /// @param margin_x,margin_y  further device pixels to leave free at each side
    void set(QPainter& p, int columns, int lines, bool keep, int margin_x, int margin_y);

    /// Measures the painter's font and fits the grid's window into @p area of the device,
    /// regardless of the page margins and no_page_map.
    void set_in(QPainter& p, int columns, int lines, const QRect& area);

    /// The logical rectangle of a rectangle of cells.
    QRect logical(const QRect& cells) const;

    int char_width() const { return char_width_; }
    int line_height() const { return line_height_; }

    /// The page margins of the last set(), in device pixels.
    struct PixelMargins {
        int top = 0;
        int bottom = 0;
        int left = 0;
        int right = 0;
    };
    const PixelMargins& pixel_margins() const { return pixels_; }
    QSize window() const { return window_; }     ///< logical size of the grid
    QSize viewport() const { return viewport_; } ///< its size on the device

private:
    void measure(const QPainter& p);
    void lay(QPainter& p, int columns, int lines, const QRect& area);

    int char_width_ = 0;
    int line_height_ = 0;
    PixelMargins pixels_;
    QSize window_{0, 0};
    QSize viewport_{0, 0};
};

} // namespace printman
