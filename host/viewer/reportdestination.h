#pragma once

#include "host/printers/hostprinters.h"

#include <QObject>

#include <functional>

class QMainWindow;
struct PrintDest;

namespace host {

class Messages;
class ReportJobs;
class ReportView;
class UnstoredSettings;

/// The destination of a window's report: the library's dialog asks for it, and the report is shown,
/// printed or saved as the user chooses.
class ReportDestination : public QObject {
    Q_OBJECT

public:
    /// What it uses of its window; all of it outlives this object.
    struct Parts {
        QMainWindow& window; ///< the parent of dialogs
        Messages& messages;
        ReportJobs& jobs;
        UnstoredSettings& unstored;
        std::function<bool()> reload; ///< opens the report again, with set_view(); false on failure
    };

    explicit ReportDestination(Parts parts) : parts_(std::move(parts)) {}

    /// Sets the view of the report that is shown from now on; there is one before ask().
    void set_view(ReportView& view) { view_ = &view; }

    /// Asks the user, and sends the report there.
    void ask();

signals:
    /// The page is shown in another way.
    void view_changed();

private:
    bool offer_printers(const HostPrinters& printers);
    void send_to(const PrintDest& record, const HostPrinters& printers);
    void show_in_font();
    void print_to(const PrintDest& record);
    void print_on_server(const PrintDest& record, const HostPrinters& printers);
    void save_to(const QByteArray& out);
    bool may_replace(const QByteArray& out);

    Parts parts_;
    ReportView* view_ = nullptr;
    QList<QByteArray> reported_errors_; ///< of the lists of printers
};

} // namespace host
