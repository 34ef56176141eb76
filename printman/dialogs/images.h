#pragma once

#include <printman/printman_export.h>
#include <printman/toolkit/qmimesourcefactory.h>

/// The images that are compiled into the library: "korvologo.png", 200 x 66 pixels, and
/// "korvoicon.png", 68 x 25. Ask QMimeSourceFactory::defaultFactory() for them: the library adds a
/// factory of this class to it when it is loaded, and removes it when it is unloaded or the process
/// exits. An image that the host set in the default factory itself takes precedence.
class PRINTMAN_EXPORT MimeSourceFactory_printman : public QMimeSourceFactory {
public:
    /// Decompresses an image when it is first asked for, and keeps it.
    const QMimeData* data(const QString& name) override;
};

/// Adds the library's images to the default factory unless they are there already. Loading the
/// library calls it.
PRINTMAN_EXPORT void qInitImages_printman();

/// Removes the library's images from the default factory until qInitImages_printman() is called.
/// Does nothing when they are not there.
PRINTMAN_EXPORT void qCleanupImages_printman();
