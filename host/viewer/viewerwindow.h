#pragma once

#include "host/files/outcome.h"
#include "host/viewer/messages.h"
#include "host/viewer/reportdestination.h"
#include "host/viewer/reportjobs.h"
#include "host/viewer/unstoredsettings.h"
#include "host/viewer/vieweractions.h"
#include "host/viewer/viewerstate.h"

#include <QMainWindow>
#include <QPointer>

class QLabel;

namespace host {

class HelpWindow;
class PageBox;
class ReportView;
class ZoomBox;

/// The viewer's window: the view of a report, with actions, boxes and status bar that are in line
/// with what is shown.
///
/// An error is reported once, in a message box, and what is shown stays as it is.
class ViewerWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit ViewerWindow(ViewerState state);
    ~ViewerWindow() override;

    /// Shows another report; on failure the one that is shown stays.
    ///
    /// @param page the first one to show, from 1; the last page when there are fewer
    Outcome open(const QByteArray& path, int page = 1);

    /// Opens it and reports a failure to the user; during a job it does nothing.
    ///
    /// @return false when it failed
    bool open_or_report(const QByteArray& path, int page = 1);

    /// The view of the report that is shown; null before the first one.
    ReportView* view() const { return view_; }

    /// The jobs on that report.
    ReportJobs& jobs() { return jobs_; }

    /// Keeps the window's place, its parts and the zoom for the next run.
    void keep_state() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void make_parts();
    void connect_actions();
    void connect_zoom_actions();
    void connect_boxes();
    void connect_view();
    void restore_state();

    bool reload();
    void show_page(int page);
    void zoom_by(int steps);

    /// Updates the window, and reports an error of changing the zoom.
    void update_zoom(const Outcome& changed);

    /// Brings actions, boxes, title and status bar in line with what is shown.
    void update_all();
    void update_actions();
    void update_selection();
    void fill_recent();

    void ask_open();
    void change_colours();
    void show_help();

    ViewerState state_;
    Messages messages_;
    UnstoredSettings unstored_;
    ReportJobs jobs_;
    ReportDestination destination_;
    ViewerActions actions_;
    ReportView* view_ = nullptr;
    QPointer<HelpWindow> help_;
    QToolBar* tools_;
    PageBox* page_box_ = nullptr;
    ZoomBox* zoom_box_ = nullptr;
    QLabel* geometry_text_;
    QLabel* selection_text_;
    QLabel* page_text_;
};

/// The first local file of dragged URLs; empty when there is none.
QByteArray dropped_file(const QList<QUrl>& urls);

} // namespace host
