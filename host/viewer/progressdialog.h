#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;

namespace host {

/// How far a long job is, with a button that cancels it. It never closes itself on a cancel: the
/// job does, when it has stopped.
class ProgressDialog : public QDialog {
    Q_OBJECT

public:
    /// @param what what is being done
    ProgressDialog(QWidget* parent, const QString& what);

    void show_pages(int done, int total);

    /// The job goes on, no one knows for how long.
    void show_unknown();

    /// The same, as another print job has what this one needs.
    void show_waiting();

    bool canceled() const { return canceled_; }

public slots:
    void reject() override;

private:
    void show_endless(const QString& text);

    QString what_;
    QLabel* text_;
    QProgressBar* bar_;
    QPushButton* cancel_;
    bool canceled_ = false;
};

} // namespace host
