#include "tests/support/tools.h"

#include <printman/system/shellword.h>

#include <QTemporaryDir>
#include <gtest/gtest.h>

using printman::shell_file_word;
using printman::shell_word;

TEST(ShellWord, lettersDigitsAndHarmlessSignsStayAsTheyAre) {
    for (const char* plain : {"/tmp/korvo.ps", "abcXYZ019", "_-+=.,:/@%", "a-b", "100%"})
        EXPECT_EQ(shell_word(plain), plain);
}

TEST(ShellWord, everyOtherByteIsQuoted) {
    const QByteArray plain = "_-+=.,:/@%";
    for (int c = 1; c < 256; ++c) {
        const QByteArray word = "a" + QByteArray(1, static_cast<char>(c));
        const bool is_plain = plain.contains(static_cast<char>(c)) || (c >= 'a' && c <= 'z') ||
                              (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        EXPECT_EQ(shell_word(word) == word, is_plain) << c;
    }
}

TEST(ShellWord, nothingAndAnOptionAreQuoted) {
    EXPECT_EQ(shell_word(""), "''");
    EXPECT_EQ(shell_word("-rf"), "'-rf'");
    EXPECT_EQ(shell_word("-"), "'-'");
    EXPECT_EQ(shell_word("it's"), "'it'\\''s'");
}

TEST(ShellWord, aFileIsNeverAnOption) {
    EXPECT_EQ(shell_file_word("-rf"), "./-rf");
    EXPECT_EQ(shell_file_word("- x"), "'./- x'");
    EXPECT_EQ(shell_file_word("/a/-b"), "/a/-b");
    EXPECT_EQ(shell_file_word(""), "''");
}

TEST(ShellWord, aZeroByteEndsTheWord) {
    EXPECT_EQ(shell_word(QByteArray("ab\0; rm x", 9)), "ab");
    EXPECT_EQ(shell_word(QByteArray("a b\0'", 5)), "'a b'");
    EXPECT_EQ(shell_word(QByteArray("\0x", 2)), "''");
}

TEST(ShellWord, theShellReadsItBackAndRunsNothing) {
    QByteArray every_byte;
    for (int c = 1; c < 256; ++c)
        every_byte += static_cast<char>(c);
    const QTemporaryDir scratch;
    const QString script = scratch.filePath(QStringLiteral("script"));
    for (const QByteArray& word :
         {every_byte, QByteArray("$(touch x)"), QByteArray("`touch x`"), QByteArray("a; touch x"),
          QByteArray("\n\ntouch x\n"), QByteArray("''''"), QByteArray("\\'"), QByteArray("*"),
          QByteArray("'"), QByteArray("a'$HOME'b"), QByteArray("!x"), QByteArray("#no comment")}) {
        testsupport::write_script(script, "printf '[%s]' " + shell_word(word));
        const testsupport::ToolResult result = testsupport::run(script, {});
        EXPECT_EQ(result.out, '[' + word + ']');
        EXPECT_EQ(result.err, "");
    }
}
