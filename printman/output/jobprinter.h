#pragma once

#include <printman/printer/prtsetup.h>
#include <printman/render/pageunits.h>

#include <QByteArray>
#include <QSizeF>
#include <QString>

#include <optional>

class PsPrinter;

namespace printman {

/// What a printer setup file says of a printer.
struct PrinterRecord {
    QString name; ///< of the spooler's queue
    DLWDEVMODE devmode{};
    FontInfo font{};
    MarginInfo margins{};
};

/// Looks a printer up: none when the id is null or not in the file.
std::optional<PrinterRecord> find_printer(const QString& setup_file, const char* id);

/// Removes the setup file of one job. A name with a zero byte is that of no file.
void remove_setup_file(const QString& name);

/// Whether a printer of that name gets plain text: the name has "generic" in it, in any case.
bool is_generic(const QString& printer_name);

/// Sets the orientation (0 portrait, 1 landscape) and the paper of that page-size number; a number
/// that means nothing changes nothing. Margins that are too wide for the paper become 0.
void set_sheet(PsPrinter& printer, int orientation, int paper_size);

/// Sets up a job of one copy: name, sheet and page range, which limits nothing that is painted.
void set_job(PsPrinter& printer, const QString& name, const DLWDEVMODE& devmode);

/// Forgets an output file that no user chose: @p job_output, which a job set, or the watermark's.
void forget_output(PsPrinter& printer, const QString& job_output);

/// Margins that can be counted with: what is negative or no number becomes 0.
PageMargins usable_margins(const MarginInfo& margins);

/// Sets the printer's own margins, in inches of the sheet as it is turned now. Those that leave no
/// room on it change nothing.
void set_sheet_margins(PsPrinter& printer, const PageMargins& margins);

/// @p margins with 0 for two opposite ones that leave no room between them on a page of @p inches.
PageMargins margins_within(const PageMargins& margins, QSizeF inches);

} // namespace printman
