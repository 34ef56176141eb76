#pragma once

#include <printman/render/pageunits.h>
#include <printman/stringitem.h>
#include <printman/toolkit/qvaluelist.h>

#include <span>

class QPainter;

namespace printman {

/// Draws items with the painter's own pen and font, in the given units.
///
/// On a PsPrinter text is written directly to the page, without a text layout for each run; the
/// result is the same.
class ItemPainter {
public:
    ItemPainter(QPainter& p, const PageUnits& units) : painter_(p), units_(units) {}

    /// Draws an item's text in its cell.
    void draw(const StringItem& item);

    /// Draws an item's text in its drawn rectangle.
    void draw_highlight(const StringItem& item);

    /// Draws all items of a page, line by line, and stores in each where its text was drawn.
    void draw_page(std::span<QValueList<StringItem>> rows);

private:
    QPainter& painter_;
    const PageUnits& units_;
};

} // namespace printman
