#include "tests/support/reportfile.h"
#include "tests/support/tools.h"

#include <printman/output/reportpainter.h>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <gtest/gtest.h>

using namespace printman;

namespace {

/// A device that counts its pages and can refuse them.
class CountedPages : public QPdfWriter {
public:
    explicit CountedPages(QIODevice* out) : QPdfWriter(out) {}

    bool newPage() override {
        if (breaks == most)
            return false;
        ++breaks;
        return QPdfWriter::newPage();
    }

    int breaks = 0;
    int most = -1;
};

class Painting : public testing::Test {
protected:
    explicit Painting(const std::string& bytes = page("one\n") + page("two\n") + page("three\n"))
        : report_(bytes) {
        buffer_.open(QIODevice::WriteOnly);
        EXPECT_EQ(report_.buffer.init(report_.fields), 0);
        EXPECT_TRUE(painter_.begin(&device_));
    }
    ~Painting() override {
        if (painter_.isActive())
            painter_.end();
    }

    QString paint(int copies, bool collate) {
        return painting_.paint_pages(QFont(), PageUnits(), {copies, collate}).error();
    }

    QString paint_text(std::string_view text, int page_lines) {
        return painting_.paint_text(report_.scratch.write(text, "text").c_str(), page_lines)
            .error();
    }

    /// The words of what was painted.
    QStringList words() {
        painter_.end();
        const QString file = QString::fromStdString(report_.scratch.path("out.pdf"));
        testsupport::write_file(file, buffer_.data());
        return testsupport::pdf_words(file);
    }

    Report report_;
    PageRows rows_;
    QBuffer buffer_;
    CountedPages device_{&buffer_};
    QPainter painter_;
    JobControl control_;
    ReportPainter painting_{{report_.buffer, report_.fields, rows_}, device_, painter_, control_};
};

} // namespace

TEST_F(Painting, collatedCopiesHaveAPageBreakBetweenAnyTwoPages) {
    EXPECT_EQ(paint(2, true), QString());
    EXPECT_EQ(device_.breaks, 5);
    EXPECT_EQ(words().join(u' '), QStringLiteral("one two three one two three"));
}

TEST_F(Painting, uncollatedCopiesLoadEachPageOnce) {
    EXPECT_EQ(paint(3, false), QString());
    EXPECT_EQ(device_.breaks, 8);
    EXPECT_EQ(rows_.loads(), 3u);
    EXPECT_EQ(words().join(u' '), QStringLiteral("one one one two two two three three three"));
}

TEST_F(Painting, noCopiesPaintNothing) {
    EXPECT_EQ(paint(0, true), QString());
    EXPECT_EQ(paint(-5, false), QString());
    EXPECT_EQ(device_.breaks, 0);
    EXPECT_EQ(rows_.loads(), 0u);
}

TEST_F(Painting, aDeviceThatTakesNoFurtherPageEndsTheJob) {
    device_.most = 1;
    EXPECT_EQ(paint(1, true), QStringLiteral("the printer takes no further page"));
    EXPECT_EQ(device_.breaks, 1);
}

TEST_F(Painting, anAbortEndsTheJobBeforeTheNextPage) {
    bool aborted = false;
    painting_.is_aborted = [&] { return aborted; };
    control_.set_progress([&](int done, int total) {
        EXPECT_EQ(total, 3);
        aborted = done == 2;
        return true;
    });
    EXPECT_EQ(paint(1, true), QStringLiteral("canceled"));
    EXPECT_EQ(device_.breaks, 1);
}

TEST_F(Painting, whatTurnsThePageBetweenTwoCopiesIsUndone) {
    painting_.before_page = [this] {
        if (report_.turn(page_last))
            rows_.load(report_.buffer.cells(), 10, 3, report_.fields);
    };
    EXPECT_EQ(paint(2, false), QString());
    EXPECT_EQ(words().join(u' '), QStringLiteral("one one two two three three"));
}

TEST_F(Painting, marginsThatLeaveNoRoomStillPaintThePage) {
    PageUnits units;
    units.margins = {.left = 1e300, .right = 1e300, .top = 1e300, .bottom = 1e300};
    EXPECT_EQ(painting_.paint_pages(QFont(), units, {1, true}).error(), QString());
    EXPECT_EQ(words().size(), 3);
}

TEST_F(Painting, aTextIsBrokenAfterAPagesLinesAlsoAfterTheLast) {
    EXPECT_EQ(paint_text("\n\nA\n\n\nB\n", 3), QString());
    EXPECT_EQ(device_.breaks, 2);
    EXPECT_EQ(words(), (QStringList{QStringLiteral("A"), QStringLiteral("B")}));
}

TEST_F(Painting, aTextWithoutPageLinesHasOnePage) {
    EXPECT_EQ(paint_text("A\nB\nC\n", 0), QString());
    EXPECT_EQ(device_.breaks, 0);
}

TEST_F(Painting, aLongTextLineCountsAsSeveral) {
    EXPECT_EQ(paint_text(std::string(511 * 2, 'x') + "y\n", 3), QString());
    EXPECT_EQ(device_.breaks, 1);
}

TEST_F(Painting, aTextThatCannotBeReadIsAnError) {
    for (const char* file :
         {"/nowhere/text", "/dev/zero", "/tmp", static_cast<const char*>(nullptr)})
        EXPECT_EQ(painting_.paint_text(file, 3).error(),
                  QStringLiteral("cannot open the text file"));
}

TEST_F(Painting, aTextStopsWhereTheDeviceTakesNoFurtherPage) {
    device_.most = 0;
    EXPECT_EQ(paint_text("A\nB\n", 1), QStringLiteral("the printer takes no further page"));
}
