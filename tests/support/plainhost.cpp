// The services that the library takes from its host: a host without settings.
#include <printman/printer/hostservices.h>
#include <printman/printman_export.h>

#include <cstdio>

extern "C" {

PRINTMAN_EXPORT int GetPrivateProfileString(const char* /*section*/, const char* /*key*/,
                                            const char* default_text, char* buffer, int size,
                                            const char* /*file*/) {
    return std::snprintf(buffer, static_cast<size_t>(size), "%s", default_text);
}

PRINTMAN_EXPORT const char* GetEnv(const char* /*key*/, const char* /*file*/,
                                   const char* /*section*/) {
    return nullptr;
}

PRINTMAN_EXPORT int SetEnv(const char* /*entry*/, const char* /*file*/, const char* /*section*/,
                           int /*flag*/) {
    return 0;
}

PRINTMAN_EXPORT void GetRGB(const char* /*key*/, int* red, int* green, int* blue) {
    *red = *green = *blue = 0;
}
}
