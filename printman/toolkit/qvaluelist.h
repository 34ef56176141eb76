#pragma once

#include <QList>

/// The value list of the interface: a plain alias of Qt's list.
template <typename T>
using QValueList = QList<T>;
