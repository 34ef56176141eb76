#pragma once

namespace printman {

class FontSet;
class PsStream;

/// Writes the font resources of a job, with all their encodings: a face with TrueType outlines as a
/// Type 42 font reduced to the glyphs used, any other as a Type 1 font made from the outlines.
void write_fonts(PsStream& out, const FontSet& fonts);

} // namespace printman
