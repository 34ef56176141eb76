#pragma once

#include <printman/progress.h>
#include <printman/result.h>

#include <QStringList>

#include <sys/types.h>
#include <vector>

namespace printman {

/// New files in the current directory, under names that no other job has: all are named before the
/// first is made, and no other process names files there meanwhile.
class ScratchSet {
public:
    struct Part {
        const char* prefix;
        const char* extension;
        mode_t mode; ///< permissions, less the process's mask
    };

    /// Makes an empty file for each part, "<prefix><number>.<extension>". On failure no file is
    /// left.
    ///
    /// @param control asked while another job names files there. A name that is taken is waited for
    ///                without asking, see timed_free_name()
    Result create(const std::vector<Part>& parts, JobControl& control);

    /// The names, with the directory's.
    const QStringList& names() const { return names_; }
    QString name(qsizetype i) const { return names_.at(i); }

private:
    bool make_files(const std::vector<Part>& parts, int& error);

    QStringList names_;
};

} // namespace printman
