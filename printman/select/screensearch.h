#pragma once

#include <printman/select/searchsession.h>

namespace printman {

class Highlights;
class PageRows;
class ScreenView;

/// A search on the page that is shown: its matches become the highlights.
class ScreenSearch final : public SearchTarget {
public:
    ScreenSearch(ScreenView& screen, const PageRows& rows, Highlights& highlights)
        : screen_(screen), rows_(rows), highlights_(highlights) {}

    QWidget* search_parent() override;

    /// Clears the highlights first. A page that is not on screen has no matches.
    bool find_matches(const QString& text, const SearchOptions& options) override;

    void show_matches() override;
    bool show_first_match() override;
    bool show_next_match() override;

private:
    ScreenView& screen_;
    const PageRows& rows_;
    Highlights& highlights_;
};

} // namespace printman
