#pragma once

#include "host/outcome.h"

class QWidget;

namespace host {

class JobWatch;

/// What is printed where.
struct PrintSetup {
    QByteArray printer; ///< id of a printer of the setup file
    int copies = 1;
    bool collate = true; ///< the whole report again and again, not page by page
};

/// Prints the report file @p report on a printer of the setup file.
///
/// @param watch may stop the job, which then is a failure
Outcome print_report(const QByteArray& report, const PrintSetup& setup, JobWatch& watch);

/// Prints it into the PostScript file @p out, as a server job. On failure or interruption @p out is
/// as it was.
Outcome serve_report(const QByteArray& report, const QByteArray& out, const PrintSetup& setup,
                     JobWatch& watch);

/// Prints it where and in the font that the user chooses in two dialogs.
///
/// @param parent of the dialogs
/// @param chosen receives whether the user went on to print
Outcome print_as_chosen(const QByteArray& report, QWidget* parent, JobWatch& watch, bool& chosen);

} // namespace host
