#include "tests/support/tools.h"

#include <gtest/gtest.h>

using testsupport::run;
using testsupport::ToolResult;

namespace {

ToolResult linked_host(const QStringList& arguments) {
    return run(QStringLiteral(LINKEDHOST), arguments);
}

ToolResult opening_host(const QStringList& arguments) {
    return run(QStringLiteral(OPENINGHOST), QStringList(QStringLiteral(LIBPRINTMAN)) + arguments);
}

} // namespace

TEST(ImagesInAHost, areThereBeforeItsMainAndAfterIt) {
    const ToolResult result = linked_host({QStringLiteral("gui")});
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(result.out.toStdString(), "logo\npixmap 200 x 66\nlogo\n");
}

TEST(ImagesInAHost, needNoApplicationExceptToBeShown) {
    const ToolResult result = linked_host({});
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(result.out.toStdString(), "logo\nlogo\n");
}

TEST(ImagesInAHost, mayBeTakenAwayForGood) {
    const ToolResult result = linked_host({QStringLiteral("taken-away")});
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(result.out.toStdString(), "logo\nno logo\n");
}

TEST(ImagesInAHost, comeAndGoWithALibraryThatIsOpenedAndClosed) {
    for (const QStringList& arguments : {QStringList(), QStringList(QStringLiteral("gui"))}) {
        const ToolResult result = opening_host(arguments);
        EXPECT_EQ(result.status, 0) << result.err.toStdString();
        EXPECT_EQ(result.out.toStdString(), "icon\nicon\nicon\n");
    }
}
