#pragma once

#include <QTransform>

/// The world matrix of the public interface, an alias of Qt's transformation.
using QWMatrix = QTransform;
