#pragma once

#include <printman/render/pageunits.h>
#include <printman/result.h>
#include <printman/stringitem.h>
#include <printman/toolkit/qvaluelist.h>

#include <QFont>

#include <memory>
#include <optional>
#include <span>

class PsPrinter;
class QWidget;

namespace printman {

/// A loaded page, to be printed.
struct PrintedPage {
    std::span<const QValueList<StringItem>> rows;
    int columns = 0; ///< 1 or more, and so are the lines
    int lines = 0;
};

/// The font that a font dialog starts with: of @p family, light, 12 points. Where no font has that
/// name it is the one that stands for it, which the dialog can find in its list.
QFont first_dialog_font(const QString& family);

/// The same of Helvetica.
QFont first_print_font();

/// The font that the user chooses, in a dialog that starts with @p first; none when it is
/// cancelled, or goes with @p parent.
std::optional<QFont> choose_font(QWidget* parent, const QFont& first);

/// Prints a page where and in the font that the user chooses in two dialogs, the printer's and the
/// font's. An output file becomes what the printer's setup() says: PostScript, or a PDF. What was
/// drawn of the page elsewhere is not touched: its items keep their drawn rectangles, and @p units
/// its measures.
///
/// While a dialog is open, the parent or the printer may go, and the units with the printer:
/// nothing is printed then.
///
/// @param parent  of the dialogs; null prints nothing
/// @param printer keeps what was chosen
/// @param units   its margins are kept clear; the page map is set on or off in it, as the host's
///                setting NOPAGEMAP says, once both dialogs have been accepted
/// @return declined when a dialog was canceled; on failure an earlier output file is as it was
Result print_page_as_chosen(QWidget* parent, const std::weak_ptr<PsPrinter>& printer,
                            PageUnits& units, const PrintedPage& page);

} // namespace printman
