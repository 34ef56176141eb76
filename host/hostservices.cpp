#include "host/settings/settings.h"

#include <printman/printer/hostservices.h>
#include <printman/printman_export.h>

#include <algorithm>
#include <cstring>

using host::host_settings;

extern "C" {

PRINTMAN_EXPORT int GetPrivateProfileString(const char* section, const char* key,
                                            const char* default_text, char* buffer, int size,
                                            const char* file) {
    if (!buffer || size <= 0)
        return 0;
    const QByteArray text = host_settings().file_value(file, section, key).value_or(default_text);
    const auto length = static_cast<int>(std::min<qsizetype>(text.size(), size - 1));
    std::memcpy(buffer, text.constData(), static_cast<size_t>(length));
    buffer[length] = '\0';
    return length;
}

PRINTMAN_EXPORT const char* GetEnv(const char* key, const char* file, const char* section) {
    static QByteArray result;
    const auto value = host_settings().value(file, section, key);
    if (!value)
        return nullptr;
    result = *value;
    return result.constData();
}

PRINTMAN_EXPORT int SetEnv(const char* entry, const char* file, const char* section, int /*flag*/) {
    const QByteArray text(entry);
    const qsizetype equals = text.indexOf('=');
    return equals > 0 &&
                   host_settings().keep(file, section, {{text.left(equals), text.mid(equals + 1)}})
               ? 1
               : 0;
}

PRINTMAN_EXPORT void GetRGB(const char* key, int* red, int* green, int* blue) {
    const host::Colour colour = host_settings().colour(key);
    if (red)
        *red = colour.red;
    if (green)
        *green = colour.green;
    if (blue)
        *blue = colour.blue;
}
}
