#pragma once

#include "host/files/outcome.h"

#include <QString>

#include <optional>

class QWidget;

namespace host {

class JobWatch;

/// How a report is printed on a printer of the setup file.
struct PrintSetup {
    QByteArray printer = {}; ///< its id
    int copies = 1;
    bool collate = true; ///< the whole report again and again instead of page by page

    /// Whether automatic page formatting is off; without a value as the settings say.
    std::optional<bool> no_page_map = std::nullopt;

    /// The setup file that serve_report() reads; empty for the one that the settings name.
    QString setup_file = {};
};

/// Prints the report file @p report.
///
/// @param watch may stop the job, which is a failure then
Outcome print_report(const QByteArray& report, const PrintSetup& setup, JobWatch& watch);

/// Prints it into the PostScript file @p out, as a server job. On failure or interruption @p out is
/// as it was.
Outcome serve_report(const QByteArray& report, const QByteArray& out, const PrintSetup& setup,
                     JobWatch& watch);

/// Prints it on the printer and in the font that the user chooses in two dialogs.
///
/// @param parent      of the dialogs
/// @param accepted    set to false when the user cancelled a dialog, which is no failure
/// @param no_page_map as in PrintSetup
Outcome print_as_chosen(const QByteArray& report, QWidget* parent, JobWatch& watch, bool& accepted,
                        std::optional<bool> no_page_map = std::nullopt);

} // namespace host
