#include <printman/printer/byteorder.h>

using namespace printman;

namespace {

constexpr std::endian machine = std::endian::native;

}

void swapint(int* number) {
    if (number)
        convert_numbers<machine>(*number);
}

void swapshort(short* number) {
    if (number)
        convert_numbers<machine>(*number);
}

void swapdouble(double* number) {
    if (number)
        convert_numbers<machine>(*number);
}

void swaplogfont(DLWLOGFONT* font) {
    if (font)
        convert_log_font<machine>(*font);
}

void swapfontinfo(FontInfo* font) {
    if (font)
        convert_font<machine>(*font);
}

void swapdevmode(DLWDEVMODE* devmode) {
    if (devmode)
        convert_devmode<machine>(*devmode);
}

void swappageinfo(PageInfo* page) {
    if (page)
        convert_page<machine>(*page);
}

void swapmargininfo(MarginInfo* margins) {
    if (margins)
        convert_margins<machine>(*margins);
}
