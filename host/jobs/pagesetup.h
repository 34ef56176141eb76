#pragma once

#include "host/files/outcome.h"
#include "host/jobs/reportfont.h"
#include "host/printers/paper.h"

#include <QPageLayout>
#include <QSize>

#include <optional>

namespace host {

/// How a report is laid out on paper.
struct PageSetup {
    static constexpr double default_font_size = 12;

    QFont font = report_font(QString::fromLatin1(default_family), default_font_size);
    bool exact_size = false;   ///< text in the font's own size, unless the page would not fit then
    int paper = usual_paper(); ///< page size number
    std::optional<QPageLayout::Orientation> orientation =
        std::nullopt;                                  ///< none: by the page's shape
    std::optional<PageMargins> margins = std::nullopt; ///< none: those that PsPrinter starts with
    QString title = {};                                ///< empty: the report's name
};

/// Takes font, paper and margins from the printer @p id of the setup file; the title stays.
Outcome read_printer_setup(const QByteArray& id, PageSetup& setup);

/// Landscape when a page of @p grid (width and height in the same unit) is wider than tall.
QPageLayout::Orientation orientation_of(QSize grid);

} // namespace host
