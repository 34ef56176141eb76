// Makes the documentation's pictures of the viewer: viewer_pictures DIRECTORY

#include "host/settings/settings.h"
#include "host/viewer/reportview.h"
#include "host/viewer/viewerwindow.h"

#include <printman/dialogs/printdestdlg.h>
#include <printman/printman.h>
#include <printman/render/screen.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

void use_dark_palette() {
    QPalette dark(QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    dark.setColor(QPalette::HighlightedText, Qt::black);
    QApplication::setPalette(dark);
}

class Shown {
public:
    explicit Shown(QSize size) : window_(host::ViewerState(QFile::encodeName(state_.path()))) {
        if (!window_.open(PRINTMAN_SOURCE_DIR "/examples/aging.rpt").ok())
            qFatal("the sample report cannot be opened");
        window_.resize(size);
        window_.show();
        QCoreApplication::processEvents();
    }

    void trigger(const char* action) {
        window_.findChild<QAction*>(QString::fromLatin1(action))->trigger();
    }

    /// Drags from a cell to another.
    void select(QPoint from, QPoint to) {
        auto* screen = window_.findChild<CScreen*>();
        const QFontMetrics metrics(screen->font());
        const auto place = [&](QPoint cell) {
            return QPoint(20 + cell.x() * metrics.maxWidth() + metrics.maxWidth() / 2,
                          20 + cell.y() * metrics.height() + metrics.height() / 2);
        };
        QTest::mousePress(screen, Qt::LeftButton, {}, place(from));
        QTest::mouseMove(screen, place(to));
        QTest::mouseRelease(screen, Qt::LeftButton, {}, place(to));
    }

    void mark(const char* text) {
        CPrintMan& manager = window_.view()->manager();
        manager.find_string_item(QString::fromLatin1(text), true, false, false);
        manager.show_page_hilights(false);
        emit window_.view()->selection_changed();
    }

    /// Opens the destination dialog, and saves it as it is for a server printer.
    void save_destination(const QString& name) {
        QTimer::singleShot(0, &window_, [name] {
            auto* dialog = qobject_cast<PrintDestDlg*>(QApplication::activeModalWidget());
            if (!dialog)
                qFatal("the destination dialog did not open");
            dialog->opToPrinter->click();
            dialog->opServerPrint->click();
            dialog->txtPrintID->setText(QStringLiteral("INVOICES"));
            QCoreApplication::processEvents();
            dialog->grab().save(name);
            dialog->reject();
        });
        trigger("destination");
    }

    void save_menu(const QString& name) {
        QMenu* const menu = window_.menuBar()->actions().first()->menu();
        menu->popup(QPoint());
        QCoreApplication::processEvents();
        menu->grab().save(name);
        menu->close();
    }

    void save(const QString& name) {
        // The status bar makes room for its texts when it has the time.
        QCoreApplication::processEvents();
        window_.grab().save(name);
    }

private:
    QTemporaryDir state_;
    host::ViewerWindow window_;
};

void make_pictures(const QString& directory) {
    constexpr QSize size(1124, 640);
    const auto name = [&directory](const char* file) {
        return directory + u'/' + QString::fromLatin1(file);
    };
    {
        Shown shown(size);
        shown.select({0, 15}, {70, 16});
        shown.save(name("viewer.png"));
        shown.save_menu(name("viewer-file.png"));
        shown.save_destination(name("viewer-destination.png"));
        shown.mark("total");
        shown.save(name("viewer-marks.png"));
        for (int i = 0; i < 4; ++i)
            shown.trigger("zoom_in");
        shown.save(name("viewer-300.png"));
        shown.trigger("fit");
        shown.save(name("viewer-fit.png"));
    }
    use_dark_palette();
    Shown dark(size);
    dark.trigger("next");
    dark.mark("total");
    dark.save(name("viewer-dark.png"));
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QTemporaryDir settings;
    host::host_settings() = host::Settings(QFile::encodeName(settings.path()));
    if (argc != 2)
        qFatal("usage: viewer_pictures DIRECTORY");
    make_pictures(QFile::decodeName(argv[1]));
    return 0;
}
