#include "tests/support/tools.h"

#include <printman/system/externaltool.h>

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace printman;
using testsupport::EnvironmentGuard;

TEST(ExternalTool, isTheFirstWordOfItsCommand) {
    EXPECT_EQ(command_tool("lpr -P a b"), "lpr");
    EXPECT_EQ(command_tool("lpr"), "lpr");
    EXPECT_EQ(command_tool(""), "");
}

TEST(ExternalTool, hasAPackage) {
    EXPECT_EQ(package_of("ps2pdf"), QStringLiteral("ghostscript"));
    EXPECT_EQ(package_of("pdftk"), QStringLiteral("pdftk-java"));
    EXPECT_EQ(package_of("lp"), QStringLiteral("cups-client"));
    EXPECT_EQ(package_of("lpr"), QStringLiteral("cups-bsd or lpr"));
    EXPECT_EQ(package_of("sh"), QString());
}

TEST(MissingTool, isNamedWithItsPackage) {
    const QTemporaryDir empty;
    const EnvironmentGuard path("PATH", empty.path().toLocal8Bit());
    EXPECT_EQ(missing_tool("ps2pdf a b"),
              QStringLiteral("ps2pdf is not installed; the Debian package ghostscript has it"));
    EXPECT_EQ(missing_tool("lpr -P a b"),
              QStringLiteral("lpr is not installed; the Debian package cups-bsd or lpr has it"));
    testsupport::write_script(empty.filePath(QStringLiteral("lpr")), "");
    EXPECT_EQ(missing_tool("lpr -P a b"), QString());
}
