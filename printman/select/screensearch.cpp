#include <printman/render/screenview.h>
#include <printman/render/textruler.h>
#include <printman/select/highlights.h>
#include <printman/select/screensearch.h>
#include <printman/toolkit/qscrollview.h>

#include <QPainter>

namespace printman {

QWidget* ScreenSearch::search_parent() {
    return screen_.scroll();
}

bool ScreenSearch::find_matches(const QString& text, const SearchOptions& options) {
    highlights_.clear();
    QPainter p;
    if (!screen_.begin_change(p) || !screen_.shows(rows_))
        return false;
    SearchPattern pattern(text, options);
    highlights_.append(find_in_rows(TextRuler(p), pattern, rows_));
    return !highlights_.list().empty();
}

void ScreenSearch::show_matches() {
    highlights_.show(false);
}

bool ScreenSearch::show_first_match() {
    return highlights_.first_match();
}

bool ScreenSearch::show_next_match() {
    return highlights_.next_match();
}

} // namespace printman
