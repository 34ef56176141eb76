#pragma once

#include <printman/result.h>

#include <functional>

class PsPrinter;
class QPagedPaintDevice;
class QPainter;

namespace printman {

/// Makes the PDF file that the user chose in the printer's setup(), on the sheet, with the title
/// and by the creator that the printer has.
///
/// @param paint paints all of it
/// @return a failure when there is no such file; an earlier one is then as it was
Result
make_chosen_pdf(const PsPrinter& printer,
                const std::function<Result(QPainter& painter, QPagedPaintDevice& device)>& paint);

} // namespace printman
