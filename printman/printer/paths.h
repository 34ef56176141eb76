#pragma once

#include <printman/printman_export.h>

#include <QString>

#include <string>

// Where the library's files are. Each function asks the host for a setting in section "env" of
// "dlwmenu.ini" and appends the file name to its value, which is taken as it is. Without the
// setting it takes the current directory; where that no longer exists the result is empty. No
// function creates a file.

/// The printer setup file, "/PRTSETUP.BIN", in the directory PRTINI.
PRINTMAN_EXPORT QString get_prtbin_path();

/// The printer id file, "/dlwprt.ini", in the directory PRTINI.
PRINTMAN_EXPORT QString get_prtini_path();

// A name of get_tmpfile() in the directory TMPDIR.
PRINTMAN_EXPORT QString get_tmpprtbin_path(); ///< "prt", "bin"
PRINTMAN_EXPORT QString get_prtoutput_path(); ///< "kpo", "ps"
PRINTMAN_EXPORT QString get_output_path();    ///< "ko", "txt"
PRINTMAN_EXPORT QString get_pdfform_path();   ///< "fm", "pdf"
PRINTMAN_EXPORT QString get_watermark_path(); ///< "wm", "txt"

/// An unused name: @p dir, a slash, @p prefix, a decimal number, and, unless @p ext is a null
/// string, a dot and @p ext. Another process may take the name before the caller does, so create
/// the file exclusively.
///
/// The number is the first that the C library's random() returns after srandom() with the current
/// second; the process's own generator is not touched. While that name is taken, the call waits for
/// the next second; after five seconds it goes on with the following numbers of the sequence.
PRINTMAN_EXPORT QString get_tmpfile(const QString& dir, const QString& prefix, const QString& ext);

/// "korvopdf.pdf" in the directory TMPDIR or, without that setting, in /tmp.
///
/// @return a static buffer of 256 bytes, which every call overwrites; empty when the path does not
///         fit
PRINTMAN_EXPORT char* get_pdffile_name();

/// The same for "korvoform.pdf", in a buffer of its own.
PRINTMAN_EXPORT char* get_formfile_name();

namespace printman {

/// A new name for a report file, "rpt" and a random number, in the directory TMPDIR, else in the
/// current one, or /tmp where that no longer exists. Nothing has that name yet.
std::string new_report_name();

} // namespace printman
