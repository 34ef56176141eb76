#pragma once

#include <QByteArray>
#include <QStringList>

namespace testhost {

/// What GetEnv() and GetPrivateProfileString() answer for a key; settings of all sections and files
/// share one table.
void set(const QByteArray& key, const QByteArray& value);

/// Forgets every setting and every recorded call.
void reset();

/// The calls of the library since reset(), each as "Service(argument, argument)".
QStringList calls();

} // namespace testhost
