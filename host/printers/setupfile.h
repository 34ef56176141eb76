#pragma once

#include "host/files/outcome.h"

#include <printman/printer/setuprecord.h>

#include <span>

namespace host {

/// The path of the printer setup file.
QByteArray setup_file_path();

/// Whether the printer setup file can be read; an empty one can.
Outcome check_setup_file();

/// The same for a job on the printer @p id, which the message names when there is no such file.
Outcome check_setup_file_for(const QByteArray& id);

/// Writes a setup file of these printers; an earlier one stays until the new one is complete.
Outcome write_setup_file(const QByteArray& path, std::span<const printman::SetupRecord> printers);

/// The error message for an unknown printer id.
QByteArray printer_not_found(const QByteArray& id);

} // namespace host
