#include <printman/printer/hostservices.h>

// A host without any settings.

extern "C" {

int GetPrivateProfileString(const char* /*section*/, const char* /*key*/,
                            const char* /*default_text*/, char* /*buffer*/, int /*size*/,
                            const char* /*file*/) {
    return 0;
}

const char* GetEnv(const char* /*key*/, const char* /*file*/, const char* /*section*/) {
    return nullptr;
}

int SetEnv(const char* /*entry*/, const char* /*file*/, const char* /*section*/, int /*flag*/) {
    return 0;
}

void GetRGB(const char* /*key*/, int* red, int* green, int* blue) {
    *red = *green = *blue = 0;
}

} // extern "C"
