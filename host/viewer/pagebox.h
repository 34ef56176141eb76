#pragma once

#include <QLineEdit>

namespace host {

/// A field that shows "3 of 120" and accepts the number of another page.
///
/// While it has the keyboard focus it shows what the user types; Escape, or leaving it, brings back
/// the current page.
class PageBox : public QLineEdit {
    Q_OBJECT

public:
    explicit PageBox(QWidget* parent = nullptr);

    /// Shows that page, with room for the longest number; with 0 pages the field is empty.
    void set_page(int page, int pages);

signals:
    /// The user has chosen page @p page, which exists.
    void page_chosen(int page);

    /// What the user typed is not the number of a page; @p error is for the user.
    void refused(const QString& error);

    /// The user leaves the field, with or without a choice.
    void left();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void show_page();
    void choose();

    int page_ = 0;
    int pages_ = 0;
};

} // namespace host
