#pragma once

#include <QString>

#include <functional>

class PsPrinter;
class QPagedPaintDevice;
class QPainter;

namespace printman {

/// Makes the PDF file that the user chose in the printer's setup(), on the sheet, with the title
/// and by the creator that the printer has.
///
/// @param paint paints all of it, and answers empty or why not
/// @return empty, or why there is no such file; an earlier one is then as it was
QString
make_chosen_pdf(const PsPrinter& printer,
                const std::function<QString(QPainter& painter, QPagedPaintDevice& device)>& paint);

} // namespace printman
