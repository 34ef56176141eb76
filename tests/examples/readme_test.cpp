#include <QByteArray>
#include <QFile>
#include <QList>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

QByteArray read(const QString& name) {
    QFile file(QStringLiteral(PRINTMAN_SOURCE_DIR "/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The fenced blocks of the README, as they stand between their fences.
QList<QByteArray> printed_blocks() {
    QList<QByteArray> blocks;
    bool inside = false;
    for (const QByteArray& line : read(QStringLiteral("README.md")).split('\n')) {
        if (line.startsWith("```")) {
            inside = !inside;
            if (inside)
                blocks << QByteArray();
        } else if (inside) {
            blocks.last() += line + '\n';
        }
    }
    return blocks;
}

} // namespace

TEST(Readme, printsTheExampleHostsWordForWord) {
    QList<QByteArray> files;
    for (const char* name : {"print_report.cpp", "show_report.cpp", "CMakeLists.txt"}) {
        files << read(QStringLiteral("examples/host/") + QString::fromLatin1(name));
        EXPECT_FALSE(files.last().isEmpty()) << name;
    }
    EXPECT_THAT(printed_blocks(), testing::UnorderedElementsAreArray(files));
}
