#pragma once

#include <printman/printdest.h>

#include <QByteArray>

namespace host {

class Settings;

/// Where the last report went, from section "destination" of dlwmenu.ini. What is missing there or
/// makes no sense is as in a first record: to the screen, local printing on @p station_printer, one
/// copy, collated. The environment has no say in it.
PrintDest read_destination(const Settings& settings, const QByteArray& station_printer);

/// Keeps the record there, as Settings::keep() does.
///
/// @return whether it is stored
bool keep_destination(Settings& settings, const PrintDest& record);

/// The record's texts.
QByteArray printer_of(const PrintDest& record);
QByteArray path_of(const PrintDest& record);

/// By what the printer id file knows this workstation: the setting STATION, or the host's name.
QByteArray station_key(const Settings& settings);

} // namespace host
