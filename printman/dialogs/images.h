#pragma once

#include <printman/printman_export.h>
#include <printman/toolkit/qmimesourcefactory.h>

/// The images that are compiled into the library: "korvologo.png", 200 x 66 pixels, and
/// "korvoicon.png", 68 x 25. Ask QMimeSourceFactory::defaultFactory() for them: the library adds a
/// factory of this class to it when it is loaded, and takes it away when it is unloaded or the
/// process exits. An image that the host gave the default factory itself goes before one of these.
class PRINTMAN_EXPORT MimeSourceFactory_printman : public QMimeSourceFactory {
public:
    /// Decompresses an image when it is asked for first, and keeps it.
    const QMimeData* data(const QString& name) override;
};

/// Adds the library's images to the default factory unless they are there. It has been called when
/// the library is loaded.
PRINTMAN_EXPORT void qInitImages_printman();

/// Takes the library's images away, until qInitImages_printman() is called. Nothing happens when
/// they are not there.
PRINTMAN_EXPORT void qCleanupImages_printman();
