#pragma once

#include <printman/printer/printerlist.h>
#include <printman/printer/prtsetup.h>

#include <QString>

#include <optional>
#include <string>

namespace printman {

struct PageLength {
    int page_length = 0; ///< lines
    int first_line = 0;
    int last_line = 0;

    bool operator==(const PageLength&) const = default;
};

/// What the dialogs show about a printer of the setup file.
struct PrinterData {
    std::string printer_name;
    std::string paper_name;                      ///< empty for an unknown paper
    std::optional<std::string> orientation_name; ///< none for an unknown orientation
    std::string font_name;
    std::string style_name;
    int use_default_page_length = 0;
    PageLength page;
    MarginInfo margins{};
    int point_size = 0;
};

/// Looks up the printer @p id in the setup file @p file.
///
/// @return none when @p id is null or not found
std::optional<PrinterData> find_printer_data(const QString& file, const char* id);

using HostPrinters = PrinterList<WinPrtSetup>;
using UnixPrinters = PrinterList<UnixPrtSetup>;

// The default page length of a printer; a null or empty id has none. The "local" functions read the
// setup file, the "remote" ones walk the lists.

bool has_local_page_length(const QString& file, const char* id);

/// Independent of has_local_page_length(): none only when the id is not found.
std::optional<PageLength> local_page_length(const QString& file, const char* id);

/// Walks the host's list, even where remote_page_length() walks the other one.
bool has_remote_page_length(HostPrinters& host_printers, const char* id);

/// Walks the list of local printers when it has a capacity, else the host's.
///
/// @return none when the id is not found or its three numbers are 0
std::optional<PageLength> remote_page_length(HostPrinters& host_printers,
                                             UnixPrinters& unix_printers, const char* id);

} // namespace printman
