#pragma once

#include <printman/printman_export.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

class QString;

// The records of the printer setup file, and the printer records that a host passes to the library.
// They have no constructors and are copied whole. In memory their numbers are in the machine's byte
// order. Texts end with a zero byte; those from a file or a host may fill their field without one.
// Members named word_ and an offset are carried along unread.

/// The font of a report, in the layout of the writing platform's logical font.
struct DLWLOGFONT {
    int32_t height;
    int32_t width;
    int32_t escapement;
    int32_t orientation;
    int32_t weight; ///< as given to the printer's font
    uint8_t italic; ///< not 0: italic; underline and strike_out likewise
    uint8_t underline;
    uint8_t strike_out;
    uint8_t char_set;
    uint8_t out_precision;
    uint8_t clip_precision;
    uint8_t quality;
    uint8_t pitch_and_family;
    char face_name[128]; ///< the font family
};

struct FontInfo {
    int32_t point_size;
    char style_name[132]; ///< as the dialogs show it
    DLWLOGFONT log_font;
};

/// The paper and the page range of a printer.
struct DLWDEVMODE {
    char device_name[128];
    int16_t word_128;
    int16_t word_130;
    int16_t word_132;
    int16_t word_134;
    int32_t fields;      ///< carried along unread
    int32_t orientation; ///< 0 portrait, 1 landscape
    int32_t paper_size;  ///< a page-size number, 0 to 29
    int16_t word_148;
    int16_t word_150;
    int16_t word_152;
    int16_t word_154;
    int16_t word_156;
    int16_t word_158;
    int32_t word_160;
    int16_t word_164;
    int16_t word_166;
    int16_t word_168;
    int16_t word_170;
    char form_name[48]; ///< name of the paper form
    int16_t word_220;
    int16_t word_222;
    int32_t word_224;
    int32_t word_228;
    int32_t word_232;
    int32_t word_236;
    int32_t from_page; ///< first page of the range handed to the printer
    int32_t to_page;   ///< last page of the range
};

struct PageInfo {
    int32_t use_default_page_length; ///< not 0: the printer has a default page length
    int32_t page_length;             ///< lines per page
    int32_t word_8;
    int32_t first_line; ///< first printed line
    int32_t last_line;  ///< last printed line
};

/// Page margins in inches.
struct MarginInfo {
    double top;
    double bottom;
    double left;
    double right;
};

/// A host-defined printer. It has a default page length when page_length, first_line or last_line
/// is not 0.
struct WinPrtSetup {
    char printer_id[128];
    char printer_name[128];
    char orientation_name[30]; ///< "Portrait" or "Landscape"
    char paper_name[128];      ///< see get_paper_size()
    char font_name[128];
    char style_name[128];
    int32_t point_size;
    int32_t word_676;
    int32_t page_length;
    int32_t first_line;
    int32_t last_line;
    double top; ///< margins in inches
    double bottom;
    double left;
    double right;
};

/// A local printer of the system. The three numbers mean what they mean for a host-defined one.
struct UnixPrtSetup {
    char printer_id[56];
    char port[80]; ///< port or spooler text
    char description[84];
    int32_t page_length;
    int32_t first_line;
    int32_t last_line;
    char host_data[32]; ///< for the host's own use
};

// These convert a number, or every number of a record, between the byte order of the setup file,
// little-endian, and that of the machine, in place; on a little-endian machine they change nothing.
// Null is ignored.
PRINTMAN_EXPORT void swapint(int* number);
PRINTMAN_EXPORT void swapshort(short* number);
PRINTMAN_EXPORT void swapdouble(double* number);
PRINTMAN_EXPORT void swaplogfont(DLWLOGFONT* font);
PRINTMAN_EXPORT void swapfontinfo(FontInfo* font);
PRINTMAN_EXPORT void swapdevmode(DLWDEVMODE* devmode);
PRINTMAN_EXPORT void swappageinfo(PageInfo* page);
PRINTMAN_EXPORT void swapmargininfo(MarginInfo* margins);

/// Looks up a printer in a setup file: the first record in use with that id. Cost: the file is read
/// up to that record.
///
/// Every output may be null. All texts end with a zero byte, truncated to one byte less than their
/// field; numbers are as stored, whether they make sense or not.
///
/// @param file         path of the setup file
/// @param printer_id   compared byte by byte
/// @param printer_name receives at most 128 bytes, terminator included
/// @param font_name    likewise; may become empty
/// @param setup_value  a number that is carried along for the host
/// @return 0; -1 when the id is not found or the file cannot be read, with the outputs unchanged
PRINTMAN_EXPORT int get_prt_data(const QString& file, const char* printer_id, char* printer_name,
                                 char* font_name, int* setup_value, DLWDEVMODE* devmode,
                                 FontInfo* font, PageInfo* page, MarginInfo* margins);

/// The same in the setup file at get_prtbin_path().
PRINTMAN_EXPORT int get_prt_data(const char* printer_id, char* printer_name, char* font_name,
                                 int* setup_value, DLWDEVMODE* devmode, FontInfo* font,
                                 PageInfo* page, MarginInfo* margins);

static_assert(std::is_same_v<int32_t, int> && std::is_same_v<int16_t, short>);

static_assert(sizeof(DLWLOGFONT) == 156 && std::is_trivial_v<DLWLOGFONT>);
static_assert(offsetof(DLWLOGFONT, weight) == 16);
static_assert(offsetof(DLWLOGFONT, italic) == 20);
static_assert(offsetof(DLWLOGFONT, underline) == 21);
static_assert(offsetof(DLWLOGFONT, strike_out) == 22);
static_assert(offsetof(DLWLOGFONT, pitch_and_family) == 27);
static_assert(offsetof(DLWLOGFONT, face_name) == 28);

static_assert(sizeof(FontInfo) == 292 && std::is_trivial_v<FontInfo>);
static_assert(offsetof(FontInfo, style_name) == 4);
static_assert(offsetof(FontInfo, log_font) == 136);

static_assert(sizeof(DLWDEVMODE) == 248 && std::is_trivial_v<DLWDEVMODE>);
static_assert(offsetof(DLWDEVMODE, word_128) == 128);
static_assert(offsetof(DLWDEVMODE, fields) == 136);
static_assert(offsetof(DLWDEVMODE, orientation) == 140);
static_assert(offsetof(DLWDEVMODE, paper_size) == 144);
static_assert(offsetof(DLWDEVMODE, word_148) == 148);
static_assert(offsetof(DLWDEVMODE, word_160) == 160);
static_assert(offsetof(DLWDEVMODE, word_164) == 164);
static_assert(offsetof(DLWDEVMODE, form_name) == 172);
static_assert(offsetof(DLWDEVMODE, word_220) == 220);
static_assert(offsetof(DLWDEVMODE, word_224) == 224);
static_assert(offsetof(DLWDEVMODE, from_page) == 240);
static_assert(offsetof(DLWDEVMODE, to_page) == 244);

static_assert(sizeof(PageInfo) == 20 && std::is_trivial_v<PageInfo>);
static_assert(offsetof(PageInfo, page_length) == 4);
static_assert(offsetof(PageInfo, first_line) == 12);
static_assert(offsetof(PageInfo, last_line) == 16);

static_assert(sizeof(MarginInfo) == 32 && std::is_trivial_v<MarginInfo>);
static_assert(offsetof(MarginInfo, bottom) == 8);
static_assert(offsetof(MarginInfo, left) == 16);
static_assert(offsetof(MarginInfo, right) == 24);

static_assert(sizeof(WinPrtSetup) == 728 && std::is_trivial_v<WinPrtSetup>);
static_assert(offsetof(WinPrtSetup, printer_name) == 128);
static_assert(offsetof(WinPrtSetup, orientation_name) == 256);
static_assert(offsetof(WinPrtSetup, paper_name) == 286);
static_assert(offsetof(WinPrtSetup, font_name) == 414);
static_assert(offsetof(WinPrtSetup, style_name) == 542);
static_assert(offsetof(WinPrtSetup, point_size) == 672);
static_assert(offsetof(WinPrtSetup, page_length) == 680);
static_assert(offsetof(WinPrtSetup, last_line) == 688);
static_assert(offsetof(WinPrtSetup, top) == 696);
static_assert(offsetof(WinPrtSetup, right) == 720);

static_assert(sizeof(UnixPrtSetup) == 264 && std::is_trivial_v<UnixPrtSetup>);
static_assert(offsetof(UnixPrtSetup, port) == 56);
static_assert(offsetof(UnixPrtSetup, description) == 136);
static_assert(offsetof(UnixPrtSetup, page_length) == 220);
static_assert(offsetof(UnixPrtSetup, last_line) == 228);
static_assert(offsetof(UnixPrtSetup, host_data) == 232);
