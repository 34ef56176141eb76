#include "host/tool.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

QByteArray message(const QString& script) {
    return host::run_tool(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script},
                          QStringLiteral("/"))
        .message;
}

} // namespace

TEST(Tool, TheEndIsTold) {
    EXPECT_EQ(host::describe({.name = "t", .status = 3, .killed = false, .said = {}}),
              "t failed with status 3");
    EXPECT_EQ(host::describe({.name = "t", .status = 9, .killed = true, .said = "\n"}),
              "t was ended by signal 9");
    EXPECT_EQ(host::describe(
                  {.name = "t", .status = 1, .killed = false, .said = "\n  Error: x  \r\nmore\n"}),
              "t failed with status 1: Error: x");
    EXPECT_EQ(
        host::describe({.name = "t", .status = 1, .killed = false, .said = QByteArray(1000, 'x')})
            .size(),
        200 + 22 + 2);
}

TEST(Tool, RunsInItsDirectoryWithoutInput) {
    EXPECT_EQ(message(QStringLiteral("test \"$(pwd)\" = / && ! read line")), "");
}

TEST(Tool, FailuresAreTold) {
    EXPECT_EQ(message(QStringLiteral("exit 7")), "sh failed with status 7");
    EXPECT_EQ(message(QStringLiteral("echo why >&2; exit 1")), "sh failed with status 1: why");
    EXPECT_EQ(message(QStringLiteral("kill -TERM $$")), "sh was ended by signal 15");
    EXPECT_EQ(
        host::run_tool(QStringLiteral("/nowhere/tool"), {}, QStringLiteral("/")).message.left(19),
        "tool cannot be run:");
}

TEST(Tool, MuchOutputDoesNotBlock) {
    EXPECT_EQ(message(QStringLiteral("head -c 3000000 /dev/zero; exit 0")), "");
}
