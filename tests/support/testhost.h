#pragma once

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace testhost {

/// What GetEnv() and GetPrivateProfileString() answer for a key; settings of all sections and files
/// share one table.
void set(const QByteArray& key, const QByteArray& value);

/// What the host does besides when the library calls a service.
void on_call(std::function<void()> action);

/// Forgets every setting, every recorded call and on_call().
void reset();

/// The calls of the library since reset(), each as "Service(argument, argument)".
QStringList calls();

} // namespace testhost
