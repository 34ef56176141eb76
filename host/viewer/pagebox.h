#pragma once

#include <QLineEdit>

namespace host {

/// A field that shows "3 of 120" and takes the number of another page.
///
/// While it has the keyboard it holds what the user types; Escape, or leaving it, brings back the
/// page that is shown.
class PageBox : public QLineEdit {
    Q_OBJECT

public:
    explicit PageBox(QWidget* parent = nullptr);

    /// Shows that page, and makes room for the longest number; 0 pages for nothing at all.
    void set_page(int page, int pages);

signals:
    /// The user wants page @p page, which there is.
    void page_chosen(int page);

    /// What the user typed names no page; @p why says so in words.
    void refused(const QString& why);

    /// The user is done here, with or without a choice.
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
