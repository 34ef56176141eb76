#include "tests/support/scratch.h"

#include <printman/system/freename.h>

#include <QDir>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

using namespace printman;
using namespace std::chrono_literals;

namespace {

/// A clock that goes on only when somebody sleeps.
struct StandingClock {
    std::chrono::milliseconds time = 1'000'000'250ms;
    std::chrono::milliseconds slept = 0ms;

    WallClock clock() {
        return {[this] { return time; },
                [this](std::chrono::milliseconds span) {
                    time += span;
                    slept += span;
                }};
    }
};

/// The first numbers that the C library gives after it was seeded with a second.
std::vector<int> numbers_of(unsigned second, size_t count) {
    std::vector<int> numbers;
    std::srand(second);
    while (numbers.size() < count)
        numbers.push_back(std::rand());
    return numbers;
}

class FreeName : public testing::Test {
protected:
    QString start() const { return QString::fromStdString(scratch_.path("x")); }
    QString name(int number) const { return start() + QString::number(number); }
    void take(int number) { scratch_.write("", "x" + std::to_string(number)); }
    QString timed() { return timed_free_name(start(), QString(), clock_.clock()); }

    const Scratch scratch_;
    StandingClock clock_;
    const unsigned second_ = 1'000'000;
};

} // namespace

TEST_F(FreeName, passesOverNamesUnderWhichAnythingIsFound) {
    scratch_.write("", "x1.txt");
    ASSERT_EQ(mkdir(scratch_.path("x2.txt").c_str(), 0700), 0);
    ASSERT_EQ(symlink("nothing", scratch_.path("x3.txt").c_str()), 0);
    scratch_.write("", "x4");
    int number = 0;
    const auto next = [&number] { return ++number; };
    EXPECT_EQ(free_name(start(), QStringLiteral(".txt"), next), start() + QStringLiteral("4.txt"));
    number = 3;
    EXPECT_EQ(free_name(start(), QString(), next), name(5));
}

TEST_F(FreeName, isRandomWhereNoTimeIsAsked) {
    QStringList names;
    for (int i = 0; i < 100; ++i)
        names << random_free_name(start(), QString());
    names.removeDuplicates();
    EXPECT_GE(names.size(), 99);
}

TEST_F(FreeName, hasTheFirstNumberOfTheSecond) {
    const int first = numbers_of(second_, 1)[0];
    EXPECT_EQ(timed(), name(first));
    EXPECT_EQ(timed(), name(first));
    EXPECT_EQ(clock_.slept, 0ms);
}

TEST_F(FreeName, waitsForTheNextSecondWhereThatIsTaken) {
    take(numbers_of(second_, 1)[0]);
    take(numbers_of(second_ + 1, 1)[0]);
    EXPECT_EQ(timed(), name(numbers_of(second_ + 2, 1)[0]));
    EXPECT_EQ(clock_.slept, 1750ms);
}

TEST_F(FreeName, takesFurtherNumbersAfterFiveSeconds) {
    for (unsigned later = 0; later <= 6; ++later)
        take(numbers_of(second_ + later, 1)[0]);
    const std::vector<int> last = numbers_of(second_ + 5, 3);
    take(last[1]);
    EXPECT_EQ(timed(), name(last[2]));
    EXPECT_EQ(clock_.slept, 5000ms);
}

TEST_F(FreeName, leavesTheProcessesOwnNumbersAlone) {
    const std::vector<int> numbers = numbers_of(42, 2);
    std::srand(42);
    EXPECT_EQ(std::rand(), numbers[0]);
    timed();
    EXPECT_EQ(std::rand(), numbers[1]);
}
