#pragma once

#include <printman/printdest.h>

#include <QByteArray>

namespace host {

class Settings;

/// The last destination, from section "destination" of dlwmenu.ini. What is missing there or is
/// invalid has its default: to the screen, local printing on @p station_printer, one copy,
/// collated. Environment variables have no effect on it.
PrintDest read_destination(const Settings& settings, const QByteArray& station_printer);

/// Keeps the record there, as Settings::keep() does.
///
/// @return whether it is stored
bool keep_destination(Settings& settings, const PrintDest& record);

/// The record's texts.
QByteArray printer_of(const PrintDest& record);
QByteArray path_of(const PrintDest& record);

/// The key of this workstation in the printer id file: the setting STATION, or the host's name.
QByteArray station_key(const Settings& settings);

} // namespace host
