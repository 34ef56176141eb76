// Shows a report in a window.
#include <printman/pagerequest.h>
#include <printman/printman.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFont>
#include <QMainWindow>
#include <QStatusBar>
#include <QToolBar>

#include <cstdio>

namespace {

/// The widget that the library's view fills.
class ReportArea : public QWidget {
public:
    explicit ReportArea(CPrintMan& report) : report_(report) {}

protected:
    void resizeEvent(QResizeEvent* /*event*/) override { report_.resize(size()); }

private:
    CPrintMan& report_;
};

class ReportWindow : public QMainWindow {
public:
    ReportWindow() {
        resize(1000, 700);
        setCentralWidget(area_);
        add_page_action(QStringLiteral("First"), Qt::Key_Home, printman::page_first);
        add_page_action(QStringLiteral("Previous"), Qt::Key_PageUp, printman::page_previous);
        add_page_action(QStringLiteral("Next"), Qt::Key_PageDown, printman::page_next);
        add_page_action(QStringLiteral("Last"), Qt::Key_End, printman::page_last);
        // The page itself takes the mouse for selecting, Ctrl+C and Ctrl+F.
        connect(bar_->addAction(QStringLiteral("Find")), &QAction::triggered, &report_,
                &CPrintMan::search_text);
        connect(bar_->addAction(QStringLiteral("Copy")), &QAction::triggered, &report_,
                &CPrintMan::copy_text);
        zoom_->addItems(report_.zoom_ratio_names());
        zoom_->setCurrentText(QStringLiteral("100%"));
        connect(zoom_, &QComboBox::textActivated, this,
                [this](const QString& name) { update_window(report_.zoom_rpt_page(name)); });
        bar_->addWidget(zoom_);
        QAction* quit = bar_->addAction(QStringLiteral("Quit"));
        quit->setShortcut(Qt::CTRL | Qt::Key_Q);
        connect(quit, &QAction::triggered, this, &QWidget::close);
    }

    /// Opens the report @p path and shows its first page; false when there is none to show.
    bool open(const char* path) {
        if (report_.init_printman(path) != 0 || report_.get_page_count() == 0)
            return false;
        const QSize size = area_->size();
        const QFont font(QStringLiteral("Courier New"), 10);
        if (report_.init_rpt_view(area_, &size, &font) != 1)
            return false;
        // The font that the settings name, if any, replaces that one.
        report_.load_screenfont();
        report_.init_rpt_view(nullptr, nullptr, nullptr);
        show_page(printman::page_first);
        return true;
    }

private:
    void add_page_action(const QString& text, const QKeySequence& key, int request) {
        QAction* action = bar_->addAction(text);
        action->setShortcut(key);
        action->setData(request);
        connect(action, &QAction::triggered, this, [this, request] { show_page(request); });
    }

    void show_page(int request) { update_window(report_.show_rpt_page(request)); }

    /// @param shown what the library answered when it was to show a page
    void update_window(int shown) {
        if (shown == 1)
            statusBar()->clearMessage();
        else
            statusBar()->showMessage(QStringLiteral("The page cannot be shown"));
        setWindowTitle(QStringLiteral("Page %1 of %2")
                           .arg(report_.get_cur_page())
                           .arg(report_.get_page_count()));
        for (QAction* action : bar_->actions()) {
            if (const int wanted = action->data().toInt(); wanted != 0)
                action->setEnabled(report_.check_rpt_page(wanted) == 1);
        }
    }

    CPrintMan report_;
    ReportArea* area_ = new ReportArea(report_);
    QToolBar* bar_ = addToolBar(QStringLiteral("Report"));
    QComboBox* zoom_ = new QComboBox;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: show_report REPORT\n", stderr);
        return 2;
    }
    ReportWindow window;
    if (!window.open(argv[1])) {
        std::fprintf(stderr, "show_report: %s is missing or not a report\n", argv[1]);
        return 1;
    }
    window.show();
    return QApplication::exec();
}
