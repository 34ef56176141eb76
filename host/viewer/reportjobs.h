#pragma once

#include "host/files/outcome.h"

#include <QCoreApplication>
#include <QString>

#include <functional>

class QMainWindow;

namespace host {

class JobWatch;
class Messages;
class ReportView;

/// The jobs on a window's report: saving, printing and copying it, one at a time. Each ends with a
/// message to the user.
class ReportJobs {
    Q_DECLARE_TR_FUNCTIONS(host::ReportJobs)

public:
    /// @param window the parent of dialogs; it and @p messages outlive this object
    ReportJobs(QMainWindow& window, Messages& messages) : window_(window), messages_(messages) {}

    /// Sets the view of the report that is shown from now on; there is one before any job.
    void set_view(ReportView& view) { view_ = &view; }

    /// Whether a job is running. Meanwhile the report must stay, and no further job begins.
    bool is_busy() const { return is_busy_; }

    // Asks for the name of a file and then does as the function below.
    void ask_save_page();
    void ask_save_report();
    void ask_export_pdf();

    // Saves the page or the report to the file @p out; an empty name does nothing.
    void save_page(const QByteArray& out);
    void save_report(const QByteArray& out);
    void export_pdf(const QByteArray& out);

    /// Copies the whole report to the clipboard.
    void copy_report();

    // Prints as the user chooses in the library's dialogs.
    void print_page();
    void print_report();

    /// A way to print the report; it sets @p accepted to false when the user cancels a dialog.
    using Print = std::function<Outcome(JobWatch& watch, bool& accepted)>;

    /// Prints the report in that way.
    void print_report(const Print& print);

private:
    /// A job on a report that is unchanged, with progress in a dialog.
    struct Job {
        QString activity; ///< for the progress dialog
        QString failure;  ///< the effect of an error
        QString success;
        std::function<Outcome(JobWatch& watch)> run;
    };

    void run(const Job& job);
    bool is_unchanged(const QString& failure);
    QByteArray ask_name(const QString& title, const QString& addition, const QString& suffix,
                        const QString& filter);

    QMainWindow& window_;
    Messages& messages_;
    ReportView* view_ = nullptr;
    QString save_directory_; ///< of the last file
    bool is_busy_ = false;
};

} // namespace host
