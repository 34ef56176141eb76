#pragma once

#include <QImage>

namespace printman {

/// An image that is compiled into the library.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): there are three, read as a table
struct EmbeddedImage {
    int width;  ///< pixels
    int height; ///< pixels
    int depth;  ///< bits per pixel: 32, 8, or 1 with the most significant bit first
    /// The compressed pixels: their uncompressed length in 4 bytes, big-endian, and a zlib stream.
    /// Rows start at multiples of 4 bytes; pixels of 32 bits are little-endian words 0xAARRGGBB.
    const unsigned char* pixels;
    unsigned pixels_size; ///< of the compressed pixels, in bytes
    int colors;           ///< entries of the color table
    const QRgb* color_table;
    bool has_alpha; ///< whether the top byte of a 32-bit pixel is its opacity; else it is ignored
    const char* name;
};

/// The images of the library, terminated by a record without pixels.
const EmbeddedImage* embedded_images();

/// The first of @p images whose name is @p name, letter for letter; null when there is none.
///
/// @param images terminated by a record without pixels
const EmbeddedImage* find_embedded_image(const EmbeddedImage* images, const QString& name);

/// Decompresses the image.
///
/// @return a null image when the pixels are damaged or there are too few of them
QImage decode_image(const EmbeddedImage& embedded);

} // namespace printman
