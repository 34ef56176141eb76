#pragma once

#include "host/files/outcome.h"

#include <printman/printer/setuprecord.h>

#include <span>

namespace host {

/// Where the printer setup file is.
QByteArray setup_file_path();

/// Why the printer setup file cannot be read; one without any bytes can.
Outcome check_setup_file();

/// Why a job on the printer @p id cannot begin as far as the setup file as a whole decides: it is
/// not there, or cannot be read.
Outcome check_setup_file_for(const QByteArray& id);

/// Writes a setup file of these printers; an earlier one stays until the new one is complete.
Outcome write_setup_file(const QByteArray& path, std::span<const printman::SetupRecord> printers);

/// What a printer is called that is not in the setup file.
QByteArray printer_not_found(const QByteArray& id);

} // namespace host
