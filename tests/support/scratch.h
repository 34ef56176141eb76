#pragma once

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

/// A directory of a test's own, removed afterwards.
class Scratch {
public:
    std::string path(const std::string& name = "report") const {
        return dir_.path().toStdString() + '/' + name;
    }

    std::string write(std::string_view bytes, const std::string& name = "report") const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

    std::string read(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    QStringList names() const {
        return QDir(dir_.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    }

private:
    QTemporaryDir dir_;
};

/// A file in memory, for tests that write thousands.
class MemoryFile {
public:
    MemoryFile() : fd_(memfd_create("report", MFD_CLOEXEC)) {}
    ~MemoryFile() { close(fd_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// Replaces what the file holds; the name under which it can be opened.
    std::string write(std::string_view bytes) const {
        std::string path = "/proc/self/fd/" + std::to_string(fd_);
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

private:
    int fd_;
};

/// Lets root open files as someone else, whom the scratch directory shuts out.
class WithoutPrivileges {
public:
    WithoutPrivileges() { EXPECT_EQ(seteuid(geteuid() == 0 ? 65534 : geteuid()), 0); }
    ~WithoutPrivileges() { EXPECT_EQ(seteuid(getuid()), 0); }
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
};

/// Random texts put together from @p parts; the same for the same seed.
class TextMaker {
public:
    TextMaker(unsigned seed, std::vector<std::string> parts)
        : random_(seed), parts_(std::move(parts)) {}

    std::string text(int max_parts) {
        std::string text;
        for (int i = number(0, max_parts); i > 0; --i)
            text += parts_[static_cast<size_t>(number(0, static_cast<int>(parts_.size()) - 1))];
        return text;
    }

    int number(int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random_);
    }

private:
    std::mt19937 random_;
    std::vector<std::string> parts_;
};
