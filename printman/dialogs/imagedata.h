#pragma once

// The compressed pixels of the embedded images; see EmbeddedImage.

namespace printman {

extern const unsigned char logo_pixels[];
extern const unsigned logo_pixels_size;
extern const unsigned char icon_pixels[];
extern const unsigned icon_pixels_size;

} // namespace printman
