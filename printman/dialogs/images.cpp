#include <printman/dialogs/embeddedimage.h>
#include <printman/dialogs/images.h>

#include <QMimeData>

using namespace printman;

namespace {

MimeSourceFactory_printman* image_source = nullptr;

/// The constructor creates the default factory, which is therefore destroyed after this.
struct ImagesOfLibrary {
    ImagesOfLibrary() { qInitImages_printman(); }
    ~ImagesOfLibrary() { qCleanupImages_printman(); }
    ImagesOfLibrary(const ImagesOfLibrary&) = delete;
    ImagesOfLibrary& operator=(const ImagesOfLibrary&) = delete;
};
const ImagesOfLibrary images_of_library;

} // namespace

const QMimeData* MimeSourceFactory_printman::data(const QString& name) {
    const QMimeData* const kept = QMimeSourceFactory::data(name);
    if (kept || name.isNull())
        return kept;
    const EmbeddedImage* const embedded = find_embedded_image(embedded_images(), name);
    const QImage image = embedded ? decode_image(*embedded) : QImage();
    if (!image.isNull())
        setImage(name, image);
    return QMimeSourceFactory::data(name);
}

void qInitImages_printman() {
    if (image_source)
        return;
    image_source = new MimeSourceFactory_printman;
    QMimeSourceFactory::addFactory(image_source);
}

void qCleanupImages_printman() {
    if (!image_source)
        return;
    QMimeSourceFactory::removeFactory(image_source);
    delete image_source;
    image_source = nullptr;
}
