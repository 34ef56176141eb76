#pragma once

#include <QTransform>

/// The world matrix of the interface: a plain alias of Qt's transformation.
using QWMatrix = QTransform;
