#include "tests/support/scratchnames.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace testsupport {

namespace {

constexpr const char* scratch_names[] = {"korvo.ps",      "korvo.pdf",    "korvoout.pdf",
                                         "korvoout2.pdf", "watermark.ps", "watermark.pdf"};

std::filesystem::path path_of(const char* name) {
    return std::filesystem::path("/tmp") / name;
}

} // namespace

QStringList taken_scratch_names() {
    QStringList names;
    for (const char* name : scratch_names)
        if (std::filesystem::exists(std::filesystem::symlink_status(path_of(name))))
            names << QString::fromLatin1(name);
    return names;
}

void free_scratch_names() {
    for (const char* name : scratch_names) {
        std::error_code error;
        std::filesystem::remove(path_of(name), error);
        if (error)
            ADD_FAILURE() << path_of(name)
                          << " stands in the way of the tests, and stays: " << error.message();
    }
}

} // namespace testsupport
