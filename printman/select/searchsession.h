#pragma once

#include <printman/select/pagesearch.h>

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class QWidget;

namespace printman {

/// What a search works on: a page that is shown, and its highlights.
class SearchTarget {
public:
    virtual ~SearchTarget() = default;

    /// The parent of the dialogs; may be null.
    virtual QWidget* search_parent() = 0;

    /// Replaces the highlights by the matches on the page, in search order; nothing is shown yet.
    ///
    /// @return whether there are any
    virtual bool find_matches(const QString& text, const SearchOptions& options) = 0;

    /// Shows all matches.
    virtual void show_matches() = 0;

    /// Shows only the first match, or only the next one; false if there is none.
    virtual bool show_first_match() = 0;
    virtual bool show_next_match() = 0;

protected:
    SearchTarget() = default;
    SearchTarget(const SearchTarget&) = default;
    SearchTarget& operator=(const SearchTarget&) = default;
};

/// The user's searches with the find dialog: what was last searched for, so that the next Find Next
/// continues from there, and the texts of earlier searches.
class SearchSession {
public:
    /// Shows the find dialog and carries out what was chosen; a message box says when nothing was
    /// found. The target and this object may be destroyed while the dialog or the box is open.
    void run(SearchTarget& target);

    /// The text of the last successful Find Next; empty if there is none to continue.
    const QString& text() const { return text_; }
    const SearchOptions& options() const { return options_; }
    const QStringList& history() const { return history_; }

private:
    struct Request {
        bool mark_all = false;
        QString text;
        SearchOptions options;
    };

    std::optional<Request> ask(QWidget* parent) const;
    bool mark_all(SearchTarget& target, const Request& request);
    bool find_next(SearchTarget& target, const Request& request);
    void remember(const QString& text);
    void reset();

    QString text_;
    SearchOptions options_;
    QStringList history_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace printman
