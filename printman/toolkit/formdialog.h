#pragma once

#include <printman/printman_export.h>

#include <QDialog>

namespace printman {

/// A dialog whose widgets come from a form: it follows changes of language and font.
class PRINTMAN_EXPORT FormDialog : public QDialog {
    Q_OBJECT

public:
    /// @param name the object's name; when null or empty the form gives it one
    FormDialog(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags);
    ~FormDialog() override;

public slots:
    /// Sets the text of every widget again, in the current language.
    virtual void languageChange() = 0;

protected:
    void changeEvent(QEvent* event) override;

    /// Adapts sizes that depend on the width of a text; called when the dialog's font has changed.
    virtual void fit_to_font();

    /// Keeps the dialog as small as its layout allows.
    void fix_size();
};

} // namespace printman
