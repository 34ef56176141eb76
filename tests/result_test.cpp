#include <printman/progress.h>
#include <printman/result.h>

#include <gtest/gtest.h>

using printman::JobControl;
using printman::JobStage;
using printman::Result;

namespace {

QString text(const char* words) {
    return QString::fromLatin1(words);
}

} // namespace

TEST(Result, isDoneUnlessItSaysOtherwise) {
    const Result result;
    EXPECT_TRUE(result.ok());
    EXPECT_FALSE(result.is_canceled());
    EXPECT_EQ(result.error(), QString());
}

TEST(Result, ofAFailureIsOneLineAndNeverEmpty) {
    EXPECT_EQ(Result::failure(text("a\nb\x1b[2J")).error(), text("a b?[2J"));
    EXPECT_FALSE(Result::failure(QString()).ok());
    EXPECT_EQ(Result::failure(QString()).error(), text("unknown error"));
    EXPECT_EQ(Result::file_failure(text("/a"), text("is gone")).error(), text("/a: is gone"));
}

TEST(Result, ofAToolNamesItAndItsEnd) {
    const Result result =
        Result::tool_failure(text("lp"), text("failed with status 1"), text("lp -d x: status 1"));
    EXPECT_FALSE(result.ok());
    EXPECT_EQ(result.tool(), text("lp"));
    EXPECT_EQ(result.tool_end(), text("failed with status 1"));
    EXPECT_EQ(result.error(), text("lp -d x: status 1"));
    EXPECT_EQ(Result::failure(text("x")).tool(), QString());
}

TEST(Result, ofACanceledOperationHasAnErrorButNotOfADeclinedDialog) {
    EXPECT_TRUE(Result::canceled().is_canceled());
    EXPECT_FALSE(Result::canceled().ok());
    EXPECT_EQ(Result::canceled().error(), text("canceled"));
    EXPECT_TRUE(Result::declined().is_canceled());
    EXPECT_FALSE(Result::declined().ok());
    EXPECT_EQ(Result::declined().error(), QString());
}

TEST(JobControl, asksWithTheNumbersReportedLast) {
    std::string asked;
    JobControl control([&asked](int done, int total) {
        asked += std::to_string(done) + '/' + std::to_string(total) + ' ';
        return true;
    });
    control.start(0, 3);
    EXPECT_TRUE(control.keep_going(JobStage::waiting));
    EXPECT_EQ(control.stage(), JobStage::waiting);
    EXPECT_TRUE(control.pages_done(1, 3));
    EXPECT_EQ(control.stage(), JobStage::pages);
    EXPECT_TRUE(control.pages_done(3, 3));
    EXPECT_TRUE(control.keep_going(JobStage::tool));
    EXPECT_EQ(control.stage(), JobStage::tool);
    EXPECT_EQ(asked, "0/3 1/3 3/3 3/3 ");
}

TEST(JobControl, asksNoMoreOnceItIsCanceled) {
    int asked = 0;
    JobControl control([&asked](int, int) { return ++asked < 2; });
    EXPECT_TRUE(control.pages_done(1, 3));
    EXPECT_FALSE(control.pages_done(2, 3));
    EXPECT_TRUE(control.is_canceled());
    EXPECT_FALSE(control.keep_going(JobStage::tool));
    EXPECT_EQ(asked, 2);
    control.start(0, 3);
    EXPECT_FALSE(control.is_canceled());
    control.cancel();
    EXPECT_FALSE(control.pages_done(1, 3));
    EXPECT_EQ(asked, 2);
}

TEST(JobControl, outlivesAFunctionThatIsReplacedFromWithin) {
    JobControl control;
    EXPECT_FALSE(control.is_watched());
    const auto kept = std::make_shared<int>(0);
    control.set_progress([&control, kept](int, int) {
        control.set_progress({});
        ++*kept;
        return true;
    });
    EXPECT_TRUE(control.is_watched());
    EXPECT_TRUE(control.pages_done(1, 2));
    EXPECT_EQ(*kept, 1);
    EXPECT_FALSE(control.is_watched());
    EXPECT_TRUE(control.pages_done(2, 2));
    EXPECT_EQ(*kept, 1);
}
