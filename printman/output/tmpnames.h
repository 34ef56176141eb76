#pragma once

namespace printman {

// The fixed scratch names, which all processes share in turn, and their lock file.

inline constexpr char16_t tmp_ps[] = u"/tmp/korvo.ps";
inline constexpr char16_t tmp_pdf[] = u"/tmp/korvo.pdf";
inline constexpr char16_t tmp_over[] = u"/tmp/korvoout.pdf";
inline constexpr char16_t tmp_result[] = u"/tmp/korvoout2.pdf";
inline constexpr char16_t tmp_watermark_ps[] = u"/tmp/watermark.ps";
inline constexpr char16_t tmp_watermark[] = u"/tmp/watermark.pdf";
inline constexpr char tmp_lock_file[] = "/tmp/korvo.lock";

} // namespace printman
