#pragma once

#include <QByteArray>
#include <QSizeF>

#include <optional>

class QLocale;

namespace host {

// Papers are known by their page size numbers.

/// The number of a paper, whatever the case of its name.
std::optional<int> paper_number(const QByteArray& name);

/// The names of all papers, separated by commas.
QByteArray paper_names();

/// The usual paper of a country: Letter or A4.
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

/// The widest margin, in inches.
inline constexpr double max_margin = 100;

/// Reads "top,bottom,left,right" in inches, each from 0 to max_margin.
std::optional<PageMargins> parse_margins(const QByteArray& text);

/// Whether @p margins leave at least half an inch in each direction of a page of @p inches.
bool leave_room(const PageMargins& margins, QSizeF inches);

} // namespace host
