#include <printman/dialogs/embeddedimage.h>
#include <printman/dialogs/imagedata.h>

#include <QtEndian>

namespace printman {

namespace {

QImage::Format format_of(const EmbeddedImage& embedded) {
    switch (embedded.depth) {
    case 1:
        return QImage::Format_Mono;
    case 8:
        return QImage::Format_Indexed8;
    case 32:
        return embedded.has_alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    default:
        return QImage::Format_Invalid;
    }
}

} // namespace

const EmbeddedImage* embedded_images() {
    static const EmbeddedImage images[] = {
        {200, 66, 32, logo_pixels, logo_pixels_size, 0, nullptr, false, "korvologo.png"},
        {68, 25, 32, icon_pixels, icon_pixels_size, 0, nullptr, false, "korvoicon.png"},
        {},
    };
    return images;
}

const EmbeddedImage* find_embedded_image(const EmbeddedImage* images, const QString& name) {
    for (; images->pixels; ++images) {
        if (QString::fromUtf8(images->name) == name)
            return images;
    }
    return nullptr;
}

QImage decode_image(const EmbeddedImage& embedded) {
    const QImage::Format format = format_of(embedded);
    if (format == QImage::Format_Invalid || embedded.width <= 0 || embedded.height <= 0)
        return {};
    QByteArray pixels = qUncompress(embedded.pixels, static_cast<int>(embedded.pixels_size));
    const qsizetype row = (qsizetype{embedded.width} * embedded.depth + 31) / 32 * 4;
    if (pixels.size() / row < embedded.height)
        return {};
    auto* const bytes = reinterpret_cast<uchar*>(pixels.data());
    if (embedded.depth == 32)
        qFromLittleEndian<quint32>(bytes, pixels.size() / 4, bytes);
    QImage image(bytes, embedded.width, embedded.height, row, format);
    if (embedded.color_table)
        image.setColorTable(
            QList<QRgb>(embedded.color_table, embedded.color_table + embedded.colors));
    return image.copy();
}

} // namespace printman
