#pragma once

/// The four services that the host program defines and exports; the library only declares them, and
/// they are resolved by name when it is loaded. They are called only from the GUI thread.
extern "C" {

/// Looks up @p key in @p section of the ini-style file @p file.
///
/// @param default_text copied when the key or the file is missing
/// @param buffer       receives at most @p size - 1 characters and a terminating zero byte
/// @param size         bytes in @p buffer
/// @return the number of characters stored
int GetPrivateProfileString(const char* section, const char* key, const char* default_text,
                            char* buffer, int size, const char* file);

/// Looks up the setting @p key in the process environment or in @p section of the configuration
/// file @p file, by the host's rules.
///
/// @return a text that stays valid until the next call; null or an empty text when it is not set.
///         The caller does not free it
const char* GetEnv(const char* key, const char* file, const char* section);

/// Stores @p entry, a text of the form KEY=value, in @p section of @p file, replacing any earlier
/// value of that key.
///
/// @param flag the library passes 1
/// @return ignored by the library
int SetEnv(const char* entry, const char* file, const char* section, int flag);

/// Reads the color setting @p key and sets all three components, each 0..255.
void GetRGB(const char* key, int* red, int* green, int* blue);
}
