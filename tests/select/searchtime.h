#pragma once

#include <QRegExp>
#include <QString>

#include <algorithm>
#include <ctime>

/// The processor's time that this process takes, which alone counts on a busy machine.
class ProcessorTime {
public:
    double seconds() const { return static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC; }

private:
    std::clock_t start_ = std::clock();
};

/// Finds all matches in @p text.
inline void search_all(const QRegExp& expression, const QString& text) {
    int from = 0;
    while (from <= text.size()) {
        const int at = expression.indexIn(text, from);
        if (at < 0)
            break;
        from = at + std::max(1, expression.matchedLength());
    }
}

/// The seconds that this machine needs for a search that is dear, but allowed: what "soon" is
/// measured by. A fiftieth of a second is usual.
inline double dear_search_seconds() {
    static const double seconds = [] {
        double most = 0;
        for (int i = 0; i < 3; ++i) {
            const ProcessorTime time;
            search_all(QRegExp(QStringLiteral("(a*)(a*)\\2\\1b")), QString(510, u'a'));
            most = std::max(most, time.seconds());
        }
        return most;
    }();
    return seconds;
}
