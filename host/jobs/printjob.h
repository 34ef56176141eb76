#pragma once

#include "host/files/outcome.h"

#include <QString>

#include <optional>

class QWidget;

namespace host {

class JobWatch;

/// What is printed where.
struct PrintSetup {
    QByteArray printer; ///< id of a printer of the setup file
    int copies = 1;
    bool collate = true; ///< the whole report again and again, not page by page

    /// Whether automatic page formatting is off; as the settings say when it has no value.
    std::optional<bool> no_page_map = std::nullopt;

    /// What serve_report() finds the printer in; empty for the one that the settings name.
    QString setup_file = {};
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
/// @param parent      of the dialogs
/// @param chosen      receives whether the user went on to print
/// @param no_page_map as in PrintSetup
Outcome print_as_chosen(const QByteArray& report, QWidget* parent, JobWatch& watch, bool& chosen,
                        std::optional<bool> no_page_map = std::nullopt);

} // namespace host
