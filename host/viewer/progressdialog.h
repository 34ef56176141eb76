#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;

namespace host {

/// Shows the progress of a long job, with a button that cancels it. The dialog stays open until the
/// job has stopped.
class ProgressDialog : public QDialog {
    Q_OBJECT

public:
    /// @param activity what the job is doing
    ProgressDialog(QWidget* parent, const QString& activity);

    void show_pages(int done, int total);

    /// Shows a busy indicator.
    void show_busy();

    /// Shows a busy indicator, and that the job waits for another print job.
    void show_waiting();

    bool canceled() const { return canceled_; }

public slots:
    void reject() override;

private:
    void show_busy(const QString& text);

    QString activity_;
    QLabel* text_;
    QProgressBar* bar_;
    QPushButton* cancel_;
    bool canceled_ = false;
};

} // namespace host
