#pragma once

#include "host/files/outcome.h"
#include "host/printers/hostprinters.h"
#include "host/viewer/vieweractions.h"
#include "host/viewer/viewerstate.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>

class QLabel;
struct PrintDest;

namespace host {

class HelpWindow;
class HostPrinters;
class JobWatch;
class PageBox;
class ReportView;
class ZoomBox;

/// The viewer's window: a report, and what the user does with it.
///
/// What goes wrong is told once, in a message box, and leaves what is shown as it is.
class ViewerWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit ViewerWindow(ViewerState state);
    ~ViewerWindow() override;

    /// Shows another report; on failure the one that is shown stays.
    ///
    /// @param page where to begin, from 1; the last page when there are fewer
    Outcome open(const QByteArray& path, int page = 1);

    /// Opens it and tells the user when that fails; during a job it does nothing.
    ///
    /// @return false when it failed
    bool open_or_tell(const QByteArray& path, int page = 1);

    /// What is shown; null before the first report.
    ReportView* view() const { return view_; }

    /// Keeps the window's place, its parts and the zoom for the next run.
    void keep_state() const;

    // Jobs on the report, each into a file of that name.
    void save_page(const QByteArray& out);
    void save_report(const QByteArray& out);
    void export_pdf(const QByteArray& out);

    /// Puts the whole report on the clipboard.
    void copy_report();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void make_parts();
    void connect_actions();
    void connect_boxes();
    void connect_view();
    void restore_state();

    void show_page(int page);
    void zoom_by(int steps);
    void note(const QString& what, const Outcome& outcome);
    void tell(const QString& what, const Outcome& outcome);

    /// Brings actions, boxes, title and status bar in line with what is shown.
    void update_all();
    void update_selection();
    void fill_recent();

    void ask_open();
    void ask_destination();
    void change_colours();
    void print_page();
    void print_report();
    void show_help();

    /// Asks for a file name to save under; empty for none.
    QByteArray ask_name(const QString& title, const QString& addition, const QString& suffix,
                        const QString& kind);
    bool is_current(const QString& what);

    // What the user chose in the library's dialog.
    bool offer_printers(const HostPrinters& printers);
    void send_to(const PrintDest& record, const HostPrinters& printers);
    void show_in_font();
    void print_to(const PrintDest& record, const HostPrinters& printers);
    void save_to(const QByteArray& out);
    bool may_replace(const QByteArray& out);

    /// Says once in the status bar that settings cannot be stored, when that is so.
    void tell_unstored();

    /// Prints the report.
    ///
    /// @param print a job, and whether the user went on to print
    void print_by(const std::function<Outcome(JobWatch&, bool& chosen)>& print);
    void run_job(const QString& label, const QString& what,
                 const std::function<Outcome(JobWatch&)>& job, const QString& done);

    ViewerState state_;
    ViewerActions actions_;
    ReportView* view_ = nullptr;
    QPointer<HelpWindow> help_;
    QToolBar* tools_;
    PageBox* page_box_ = nullptr;
    ZoomBox* zoom_box_ = nullptr;
    QLabel* geometry_text_;
    QLabel* selection_text_;
    QLabel* page_text_;
    QString save_directory_;
    QList<QByteArray> told_faults_; ///< of the lists of printers
    bool unstored_font_ = false;
    bool told_unstored_ = false;
    bool busy_ = false;
};

/// The file that a drag of files brings first; empty when it brings none of this machine.
QByteArray dropped_file(const QList<QUrl>& urls);

} // namespace host
