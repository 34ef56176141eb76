#pragma once

#include <printman/stringitem.h>

#include <QRect>

#include <algorithm>
#include <list>
#include <unordered_map>
#include <vector>

namespace printman {

/// Finds the records of a list by where they are drawn, in list order where places are equal.
class RecordIndex {
public:
    using Records = std::list<StringItem>;

    explicit RecordIndex(Records& records) : records_(records) {
        // From the last to the first, so that the first is at the end of its place's list.
        for (auto at = records.end(); at != records.begin();) {
            --at;
            places_[key(at->drawn)].push_back(at);
        }
    }

    /// Erases the first record drawn at @p place from the list; false if there is none.
    bool erase(const QRect& place) {
        const auto found = places_.find(key(place));
        if (found == places_.end() || found->second.empty())
            return false;
        records_.erase(found->second.back());
        found->second.pop_back();
        return true;
    }

private:
    struct Key {
        QPoint top_left;
        QPoint bottom_right;
        bool operator==(const Key&) const = default;
    };
    struct Hash {
        size_t operator()(const Key& key) const {
            return qHashMulti(0, key.top_left.x(), key.top_left.y(), key.bottom_right.x(),
                              key.bottom_right.y());
        }
    };

    static Key key(const QRect& place) { return {place.topLeft(), place.bottomRight()}; }

    Records& records_;
    std::unordered_map<Key, std::vector<Records::iterator>, Hash> places_;
};

/// Rectangles of a page by line: what touches a rectangle that is one line high is on its line.
class PlacesByLine {
public:
    explicit PlacesByLine(int line_height) : line_height_(std::max(1, line_height)) {}

    void add(const QRect& place) {
        if (!place.isEmpty())
            lines_[place.center().y() / line_height_].push_back(place);
    }

    /// The rectangles on the line of @p place.
    const std::vector<QRect>& beside(const QRect& place) const {
        static const std::vector<QRect> none;
        const auto found = lines_.find(place.center().y() / line_height_);
        return found == lines_.end() ? none : found->second;
    }

private:
    int line_height_;
    std::unordered_map<int, std::vector<QRect>> lines_;
};

} // namespace printman
