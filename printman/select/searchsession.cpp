#include <printman/select/finddlg.h>
#include <printman/select/searchsession.h>
#include <printman/toolkit/modaldialog.h>

#include <QPointer>

namespace printman {

void SearchSession::run(SearchTarget& target) {
    const QPointer<QWidget> parent = target.search_parent();
    const bool has_parent = !parent.isNull();
    const std::weak_ptr<const bool> alive = alive_;
    const std::optional<Request> request = ask(parent);
    if (alive.expired() || (has_parent && !parent))
        return;
    if (!request) {
        reset();
        return;
    }
    const bool found = request->mark_all ? mark_all(target, *request) : find_next(target, *request);
    // Last, since the user may close everything while the box is open.
    if (!found)
        search_error(parent, request->text);
}

std::optional<SearchSession::Request> SearchSession::ask(QWidget* parent) const {
    const bool continues = !text_.isEmpty();
    const ModalDialog<findDlg> dialog(parent);
    dialog->set_search_history(history_);
    if (continues) {
        dialog->set_search_text(text_);
        dialog->set_foreword(options_.forward);
        dialog->set_case(options_.case_sensitive);
        dialog->set_wholeword(options_.whole_word);
    }
    const int result = dialog->exec();
    if (!dialog)
        return std::nullopt;
    const bool is_search =
        result == findDlg::find_next_result || result == findDlg::mark_all_result;
    Request request{.mark_all = result == findDlg::mark_all_result,
                    .text = dialog->search_text,
                    .options = {.forward = dialog->get_direction() != findDlg::backward,
                                .case_sensitive = dialog->is_case_sensitive(),
                                .whole_word = dialog->is_whole_word()}};
    if (!is_search || request.text.isEmpty())
        return std::nullopt;
    return request;
}

bool SearchSession::mark_all(SearchTarget& target, const Request& request) {
    const bool found = target.find_matches(request.text, request.options);
    reset();
    if (!found)
        return false;
    remember(request.text);
    target.show_matches();
    return true;
}

bool SearchSession::find_next(SearchTarget& target, const Request& request) {
    const bool continues = !text_.isEmpty() && text_ == request.text && options_ == request.options;
    bool found = false;
    if (continues) {
        found = target.show_next_match();
    } else {
        target.find_matches(request.text, request.options);
        remember(request.text);
        found = target.show_first_match();
    }
    if (!found) {
        reset();
        return false;
    }
    text_ = request.text;
    options_ = request.options;
    return true;
}

void SearchSession::remember(const QString& text) {
    if (!is_in_history(history_, text))
        history_ << text;
}

void SearchSession::reset() {
    text_.clear();
    options_ = SearchOptions();
}

} // namespace printman
