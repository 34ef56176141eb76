#pragma once

#include <QList>

/// The value list of the public interface, an alias of Qt's list.
template <typename T>
using QValueList = QList<T>;
