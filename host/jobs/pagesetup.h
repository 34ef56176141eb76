#pragma once

#include "host/files/outcome.h"

#include <QFont>
#include <QPageLayout>
#include <QSize>

#include <optional>

class QLocale;

namespace host {

class Arguments;

/// The page size number of a paper, whatever the case of its name.
std::optional<int> paper_number(const QByteArray& name);

/// The paper of a country: Letter where that is the usual sheet, A4 elsewhere.
int usual_paper(const QLocale& locale);

/// The same for the locale that LC_ALL, LC_PAPER or LANG names.
int usual_paper();

/// Margins of the page as it is read, in inches.
struct PageMargins {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;

    bool operator==(const PageMargins&) const = default;
};

/// Reads "T,B,L,R" in inches, each from 0 to 100.
std::optional<PageMargins> parse_margins(const QByteArray& text);

/// Whether @p margins leave at least half an inch each way of a page of @p inches.
bool leave_room(const PageMargins& margins, QSizeF inches);

/// How a report is laid on paper.
struct PageSetup {
    QFont font;              ///< its size is that asked for, or 12 points
    bool exact_size = false; ///< the text has that size, unless the page then would not fit
    int paper = 0;           ///< page size number
    std::optional<QPageLayout::Orientation> orientation; ///< none: by the page's shape
    std::optional<PageMargins> margins;                  ///< none: the printer's own
    QString title;                                       ///< empty: the report's name

    /// Reads the options of a command line: wrong usage when one makes no sense, a failure when the
    /// printer that one names, for its font, sheet and margins, is not in the setup file.
    static Outcome read(const Arguments& arguments, PageSetup& setup);
};

/// A font whose characters are all of one width, or the nearest that there is.
QFont report_font(const QString& family, double point_size);

/// Landscape when a page of @p grid (width and height in any one unit) is wider than tall.
QPageLayout::Orientation orientation_of(QSize grid);

} // namespace host
