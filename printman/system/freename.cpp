#include <printman/system/freename.h>

#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <thread>

namespace printman {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr seconds taken_limit(5);

bool is_taken(const QString& path) {
    const QFileInfo info(path);
    return info.isSymLink() || info.exists();
}

/// The C library's generator with a state of its own.
class SeededNumbers {
public:
    explicit SeededNumbers(unsigned seed) {
        ::initstate_r(seed, state_.data(), state_.size(), &generator_);
    }
    SeededNumbers(const SeededNumbers&) = delete;
    SeededNumbers& operator=(const SeededNumbers&) = delete;

    int next() {
        int32_t number = 0;
        ::random_r(&generator_, &number);
        return number;
    }

private:
    // The size of the state that random() starts with: another one gives other numbers.
    std::array<char, 128> state_{};
    random_data generator_{};
};

seconds second_of(milliseconds time) {
    return std::chrono::duration_cast<seconds>(time);
}

} // namespace

QString free_name(const QString& start, const QString& end, const std::function<int()>& number) {
    QString path;
    do {
        path = start + QString::number(number()) + end;
    } while (is_taken(path));
    return path;
}

QString random_free_name(const QString& start, const QString& end) {
    return free_name(start, end, [] { return QRandomGenerator::global()->bounded(RAND_MAX); });
}

WallClock WallClock::system() {
    return {[] {
                return std::chrono::duration_cast<milliseconds>(
                    std::chrono::system_clock::now().time_since_epoch());
            },
            [](milliseconds time) { std::this_thread::sleep_for(time); }};
}

QString timed_free_name(const QString& start, const QString& end, const WallClock& clock) {
    milliseconds waited{0};
    for (;;) {
        const milliseconds now = clock.now();
        SeededNumbers numbers(static_cast<unsigned>(second_of(now).count()));
        if (waited >= taken_limit)
            return free_name(start, end, [&numbers] { return numbers.next(); });
        QString path = start + QString::number(numbers.next()) + end;
        if (!is_taken(path))
            return path;
        // The time that was slept, not the difference of two looks: the clock may be set back.
        const milliseconds to_next = second_of(now) + seconds(1) - now;
        const milliseconds step = std::min<milliseconds>(to_next, taken_limit - waited);
        clock.sleep_for(step);
        waited += step;
    }
}

} // namespace printman
