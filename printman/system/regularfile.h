#pragma once

#include <cstdio>
#include <memory>
#include <sys/types.h>

namespace printman {

/// An open stream, closed when its owner goes.
struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// Opens a regular file and nothing else: a pipe or a device, which might be waited for or never
/// end, is refused. The terminal does not become the process's own, and children do not inherit
/// the descriptor.
///
/// @param path   null is refused
/// @param access O_RDONLY, O_WRONLY or O_RDWR
/// @param size   receives the file's size in bytes; may be null
/// @return the descriptor, which the caller closes; -1 on failure with errno set: EISDIR for a
///         directory, ESPIPE for anything else that is no regular file
int open_regular_descriptor(const char* path, int access, off_t* size = nullptr);

/// The same for reading, as a stream; null on failure.
File open_regular_file(const char* path, off_t* size = nullptr);

} // namespace printman
