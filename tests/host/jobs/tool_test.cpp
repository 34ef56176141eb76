#include "host/jobs/interrupt.h"
#include "host/jobs/tool.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

QByteArray message(const QString& script) {
    return host::run_tool(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script},
                          QStringLiteral("/"))
        .message;
}

} // namespace

TEST(Tool, theEndIsTold) {
    EXPECT_EQ(host::describe({.name = "t", .status = 3, .killed = false, .output = {}}),
              "t failed with status 3");
    EXPECT_EQ(host::describe({.name = "t",
                              .status = 1,
                              .killed = false,
                              .output = "Error: cannot open:\n\n form.pdf \nmore\n"}),
              "t failed with status 1: Error: cannot open: form.pdf");
    EXPECT_EQ(host::first_words("Error: cannot open:\n  form.pdf\n  no password\n  the end\n"),
              "Error: cannot open: form.pdf: no password");
    EXPECT_EQ(host::first_words("printman: t failed\none\n  two\n"), "one");
    EXPECT_EQ(host::describe({.name = "t", .status = 9, .killed = true, .output = "\n"}),
              "t was ended by signal 9");
    EXPECT_EQ(
        host::describe(
            {.name = "t", .status = 1, .killed = false, .output = "\n  Error: x  \r\nmore\n"}),
        "t failed with status 1: Error: x");
    EXPECT_EQ(
        host::describe({.name = "t", .status = 1, .killed = false, .output = QByteArray(1000, 'x')})
            .size(),
        200 + 22 + 2);
}

TEST(Tool, runsInItsDirectoryWithoutInput) {
    EXPECT_EQ(message(QStringLiteral("test \"$(pwd)\" = / && ! read line")), "");
}

TEST(Tool, failuresAreTold) {
    EXPECT_EQ(message(QStringLiteral("exit 7")), "sh failed with status 7");
    EXPECT_EQ(message(QStringLiteral("echo why >&2; exit 1")), "sh failed with status 1: why");
    EXPECT_EQ(message(QStringLiteral("kill -TERM $$")), "sh was ended by signal 15");
    EXPECT_EQ(
        host::run_tool(QStringLiteral("/nowhere/tool"), {}, QStringLiteral("/")).message.left(19),
        "tool cannot be run:");
}

TEST(Tool, muchOutputDoesNotBlock) {
    EXPECT_EQ(message(QStringLiteral("head -c 3000000 /dev/zero; exit 0")), "");
}

TEST(Tool, statusesAreKnownWhereChildrenAreIgnored) {
    std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(message(QStringLiteral("exit 7")), "sh failed with status 7");
    EXPECT_EQ(message(QStringLiteral("true")), "");
    EXPECT_EQ(std::signal(SIGCHLD, SIG_DFL), SIG_IGN);
}

TEST(Tool, endsWhenWhoeverWaitsHasEnough) {
    int asked = 0;
    const host::Outcome ended = host::run_tool(
        QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QStringLiteral("sleep 3600")},
        QStringLiteral("/"), [&asked] { return ++asked < 3; });
    EXPECT_EQ(ended.message, "interrupted");
    EXPECT_EQ(asked, 3);
}

TEST(Interrupts, wakeWhoeverWaits) {
    const auto job = [] {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_NONBLOCK) != 0)
            ::_exit(9);
        host::catch_interrupts();
        host::wake_on_interrupt(ends[1]);
        ::raise(SIGTERM);
        char byte = 0;
        ::_exit(::read(ends[0], &byte, 1) == 1 ? 7 : 8);
    };
    EXPECT_EXIT(job(), testing::ExitedWithCode(7), "^$");
}

TEST(Interrupts, areNotedWhileAJobAsks) {
    const auto job = [] {
        host::catch_interrupts();
        const bool before = host::interrupted();
        ::raise(SIGTERM);
        ::_exit(!before && host::interrupted() ? 7 : 8);
    };
    EXPECT_EXIT(job(), testing::ExitedWithCode(7), "^$");
}

TEST(Interrupts, endTheProgramWhileNothingAsks) {
    const auto job = [](bool early) {
        host::catch_interrupts();
        if (early)
            ::raise(SIGINT);
        const host::ExitOnInterrupt at_once;
        ::raise(SIGINT);
        ::_exit(8);
    };
    EXPECT_EXIT(job(false), testing::ExitedWithCode(1), "^printman: interrupted\n$");
    EXPECT_EXIT(job(true), testing::ExitedWithCode(1), "^printman: interrupted\n$");
}

TEST(Interrupts, stayIgnoredWhereTheCallerIgnoresThem) {
    const auto job = [] {
        std::signal(SIGHUP, SIG_IGN);
        host::catch_interrupts();
        ::raise(SIGHUP);
        ::_exit(host::interrupted() ? 8 : 7);
    };
    EXPECT_EXIT(job(), testing::ExitedWithCode(7), "^$");
}
