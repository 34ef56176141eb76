#pragma once

#include <QStringList>

#include <functional>
#include <sys/types.h>
#include <vector>

namespace printman {

/// New files in the current directory, under names that no other job has: all are named before the
/// first is made, and no other process names files there meanwhile.
class ScratchSet {
public:
    struct Part {
        const char* prefix;
        mode_t mode; ///< permissions, less the process's mask
    };

    /// Makes an empty file for each part, "<prefix><number>.pdf".
    ///
    /// @param goes_on asked while another job names files there: false ends the wait; may be empty
    /// @return empty, or why not; no file is left then
    QString create(const std::vector<Part>& parts, const std::function<bool()>& goes_on = {});

    /// The names, with the directory's.
    const QStringList& names() const { return names_; }
    QString name(qsizetype i) const { return names_.at(i); }

private:
    bool make_files(const std::vector<Part>& parts, int& error);

    QStringList names_;
};

} // namespace printman
