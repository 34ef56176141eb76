#pragma once

#include <printman/printman_export.h>

#include <QString>

/// Copies the Latin-1 form of @p s into one static buffer of 128 bytes, cut to 127 characters, and
/// returns that buffer. Every call overwrites the last result.
PRINTMAN_EXPORT char* q2cstr(const QString& s);

/// @return 1 if @p length is 0 or less or each of the first @p length bytes is a blank (byte 32
///         alone; a tab is not one), else 0
PRINTMAN_EXPORT int is_whitespace(const char* text, int length);

/// Trims blanks (byte 32) from both ends of the @p length bytes at @p src.
///
/// @param dst      zero-filled over @p dst_size bytes, then receives the trimmed text up to a zero
///                 byte in it; never more than @p dst_size - 1 bytes
/// @return the length of the text in @p dst; 0 when all bytes are blank
PRINTMAN_EXPORT int get_print_string(char* dst, int dst_size, const char* src, int length);

/// Writes @p message and a newline to standard error.
///
/// @return the result of the formatted print: bytes written, negative on failure
PRINTMAN_EXPORT int DLWErrorWin(const char* message);
