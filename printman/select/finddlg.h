#pragma once

#include <printman/printman_export.h>
#include <printman/toolkit/formdialog.h>

#include <QString>
#include <QStringList>

#include <memory>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
namespace Ui {
class findDlgBase;
}

/// The widgets of the find dialog, without behaviour. Nothing is checked at first.
class PRINTMAN_EXPORT findDlgBase : public printman::FormDialog {
    Q_OBJECT

public:
    /// @param name the object's name; null or empty for "findDlgBase"
    explicit findDlgBase(QWidget* parent = nullptr, const char* name = nullptr, bool modal = false,
                         Qt::WindowFlags flags = {});
    ~findDlgBase() override;

    QLabel* lbFindWhat;
    QComboBox* cbFind; ///< the search text, with the earlier ones to choose from
    QGroupBox* bgbDirection;
    QRadioButton* opUp;
    QRadioButton* opDown;
    QGroupBox* gbOptions;
    QCheckBox* chkWhole;
    QCheckBox* chkCase;
    QPushButton* btnFindNext;
    QPushButton* btnMarkAll;
    QPushButton* btnCancel;

public slots:
    void languageChange() override;

private:
    std::unique_ptr<Ui::findDlgBase> ui_;
};

/// The find dialog. Run it with exec(), which returns a Result: cancel_result for Cancel, Escape
/// and the window's close button; with the other two the search text is not empty.
class PRINTMAN_EXPORT findDlg : public findDlgBase {
    Q_OBJECT

public:
    enum Result { find_next_result = 0, mark_all_result = 1, cancel_result = 2 };
    enum Direction { backward = 3, forward = 4 };

    explicit findDlg(QWidget* parent = nullptr, const char* name = nullptr);

    QString search_text;        ///< the last text that was set or searched for
    QStringList search_history; ///< the earlier texts, oldest first

    /// @return a Direction: forward if neither button is checked
    int get_direction() const;
    bool is_case_sensitive() const;
    bool is_whole_word() const;

    /// Puts @p text into the field, selected, so that typing replaces it.
    void set_search_text(const QString& text);
    void set_foreword(bool forward);
    void set_case(bool sensitive);
    void set_wholeword(bool whole);

    /// Offers @p history in the field's list; the text in the field stays.
    void set_search_history(const QStringList& history);

public slots:
    /// Closes the dialog with find_next_result; an empty text leaves it open.
    void find_next();

    /// Closes the dialog with mark_all_result; an empty text leaves it open.
    void mark_all();

    /// Closes the dialog with cancel_result.
    void cancel_dlg();

    /// The same as cancel_dlg(), for Escape and the window's close button.
    void reject() override;

private:
    void leave(int result);
};

/// Whether @p history has an entry that is exactly @p text.
PRINTMAN_EXPORT bool is_in_history(QStringList& history, QString text);

/// Tells the user in a message box over @p parent that @p text was not found, and waits for OK. Of
/// a text of more than 1,000 characters the box shows only the beginning.
PRINTMAN_EXPORT void search_error(QWidget* parent, QString text);
