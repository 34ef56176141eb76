#include "host/viewer/vieweractions.h"

#include "host/viewer/icons.h"

#include <QAction>
#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace host {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(host::ViewerActions)
};

QString without_mnemonic(QString text) {
    text.remove(u'&');
    if (text.endsWith(QChar(0x2026)))
        text.chop(1);
    return text;
}

/// @param name of the object, by which it is found
QAction* make(QMainWindow& window, const char* name, const QString& text,
              const QList<QKeySequence>& keys) {
    auto* action = new QAction(text, &window);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcuts(keys);
    QString tip = without_mnemonic(text);
    if (!keys.isEmpty())
        tip += QStringLiteral(" (%1)").arg(keys.first().toString(QKeySequence::NativeText));
    action->setToolTip(tip);
    // A menu has words; pictures are for the tool bar.
    action->setIconVisibleInMenu(false);
    window.addAction(action);
    return action;
}

QAction* make(QMainWindow& window, const char* name, const QString& text,
              const QList<QKeySequence>& keys, Picture picture) {
    QAction* action = make(window, name, text, keys);
    action->setIcon(icon_of(picture));
    return action;
}

QKeySequence ctrl(Qt::Key key) {
    return {Qt::CTRL | key};
}

QKeySequence ctrl_shift(Qt::Key key) {
    return {Qt::CTRL | Qt::SHIFT | key};
}

void add_all(QMenu& menu, std::initializer_list<QAction*> actions) {
    for (QAction* action : actions) {
        if (action)
            menu.addAction(action);
        else
            menu.addSeparator();
    }
}

} // namespace

ViewerActions::ViewerActions(QMainWindow& w)
    : open(make(w, "open", Texts::tr("&Open\u2026"), {ctrl(Qt::Key_O)}, Picture::open)),
      reload(make(w, "reload", Texts::tr("Re&load"), {Qt::Key_F5})),
      save_page(
          make(w, "save_page", Texts::tr("Save Pa&ge as Text\u2026"), {ctrl_shift(Qt::Key_S)})),
      save_report(make(w, "save_report", Texts::tr("&Save Report as Text\u2026"), {ctrl(Qt::Key_S)},
                       Picture::save_text)),
      export_pdf(make(w, "export_pdf", Texts::tr("&Export PDF\u2026"), {ctrl(Qt::Key_E)},
                      Picture::export_pdf)),
      print_page(
          make(w, "print_page", Texts::tr("&Print Page\u2026"), {ctrl(Qt::Key_P)}, Picture::print)),
      print_report(
          make(w, "print_report", Texts::tr("Pr&int Report\u2026"), {ctrl_shift(Qt::Key_P)})),
      destination(make(w, "destination", Texts::tr("&Destination\u2026"), {ctrl(Qt::Key_D)})),
      quit(make(w, "quit", Texts::tr("&Quit"), {ctrl(Qt::Key_Q)})),
      copy(make(w, "copy", Texts::tr("&Copy"), {ctrl(Qt::Key_C)}, Picture::copy)),
      copy_report(make(w, "copy_report", Texts::tr("Copy &Whole Report"), {ctrl_shift(Qt::Key_C)})),
      find(make(w, "find", Texts::tr("&Find\u2026"), {ctrl(Qt::Key_F)}, Picture::find)),
      zoom_in(make(w, "zoom_in", Texts::tr("Zoom &In"), {ctrl(Qt::Key_Plus), ctrl(Qt::Key_Equal)},
                   Picture::zoom_in)),
      zoom_out(
          make(w, "zoom_out", Texts::tr("Zoom &Out"), {ctrl(Qt::Key_Minus)}, Picture::zoom_out)),
      zoom_usual(make(w, "zoom_usual", Texts::tr("&Usual Size"), {ctrl(Qt::Key_0)})),
      fit(make(w, "fit", Texts::tr("Fit &Page"), {ctrl(Qt::Key_9)})),
      colours(make(w, "colours", Texts::tr("Page &Colours\u2026"), {})),
      first(make(w, "first", Texts::tr("&First Page"), {ctrl(Qt::Key_Home)}, Picture::first_page)),
      previous(make(w, "previous", Texts::tr("&Previous Page"), {Qt::Key_PageUp},
                    Picture::previous_page)),
      next(make(w, "next", Texts::tr("&Next Page"), {Qt::Key_PageDown}, Picture::next_page)),
      last(make(w, "last", Texts::tr("&Last Page"), {ctrl(Qt::Key_End)}, Picture::last_page)),
      go_to(make(w, "go_to", Texts::tr("&Go to Page\u2026"), {ctrl(Qt::Key_G)})),
      help(make(w, "help", Texts::tr("&Keys and Mouse"), {Qt::Key_F1}, Picture::help)),
      recent(new QMenu(Texts::tr("Open &Recent"), &w)) {
    quit->setMenuRole(QAction::QuitRole);
    fit->setCheckable(true);
    recent->setObjectName(QStringLiteral("recent"));
}

void ViewerActions::add_menus(QMainWindow& window, const std::vector<QAction*>& shown) {
    QMenuBar& bar = *window.menuBar();
    QMenu* file = bar.addMenu(Texts::tr("&File"));
    file->addAction(open);
    file->addMenu(recent);
    add_all(*file, {reload, nullptr, save_report, save_page, export_pdf, nullptr, print_page,
                    print_report, nullptr, destination, nullptr, quit});
    QMenu* edit = bar.addMenu(Texts::tr("&Edit"));
    add_all(*edit, {copy, copy_report, nullptr, find});
    QMenu* view = bar.addMenu(Texts::tr("&View"));
    add_all(*view, {zoom_in, zoom_out, zoom_usual, fit, nullptr, colours, nullptr});
    for (QAction* action : shown)
        view->addAction(action);
    QMenu* go = bar.addMenu(Texts::tr("&Go"));
    add_all(*go, {first, previous, next, last, nullptr, go_to});
    QMenu* about = bar.addMenu(Texts::tr("&Help"));
    about->addAction(help);
}

void ViewerActions::add_tools(QToolBar& bar, QWidget* page_box, QWidget* zoom_box) const {
    bar.addAction(open);
    bar.addSeparator();
    bar.addAction(first);
    bar.addAction(previous);
    bar.addWidget(page_box);
    bar.addAction(next);
    bar.addAction(last);
    bar.addSeparator();
    bar.addAction(zoom_out);
    bar.addWidget(zoom_box);
    bar.addAction(zoom_in);
    bar.addSeparator();
    bar.addAction(find);
    bar.addAction(copy);
    bar.addSeparator();
    bar.addAction(save_report);
    bar.addAction(export_pdf);
    bar.addAction(print_page);
    bar.addSeparator();
    bar.addAction(help);
}

std::vector<KeyText> key_texts(const ViewerActions& actions) {
    std::vector<KeyText> texts;
    const auto add = [&texts](const QAction* action) {
        QStringList keys;
        for (const QKeySequence& key : action->shortcuts())
            keys << key.toString(QKeySequence::NativeText);
        texts.push_back({keys.join(Texts::tr(" or ")), without_mnemonic(action->text())});
    };
    for (const QAction* action :
         {actions.previous, actions.next, actions.first, actions.last, actions.go_to})
        add(action);
    texts.push_back({Texts::tr("Arrow keys, wheel"), Texts::tr("Scroll")});
    texts.push_back({Texts::tr("Space, Shift+Space"), Texts::tr("Scroll by what is seen")});
    for (const QAction* action :
         {actions.zoom_in, actions.zoom_out, actions.zoom_usual, actions.fit})
        add(action);
    texts.push_back({Texts::tr("Ctrl and wheel"), Texts::tr("Zoom")});
    texts.push_back({Texts::tr("Drag with the mouse"), Texts::tr("Select text")});
    texts.push_back({Texts::tr("Click"), Texts::tr("Select nothing")});
    add(actions.copy);
    add(actions.copy_report);
    texts.push_back({Texts::tr("Ctrl+V"), Texts::tr("Show the clipboard in the browser program")});
    for (const QAction* action :
         {actions.find, actions.open, actions.reload, actions.save_report, actions.save_page,
          actions.export_pdf, actions.print_page, actions.print_report, actions.destination,
          actions.help, actions.quit})
        add(action);
    texts.push_back({Texts::tr("Drop a file"), Texts::tr("Open it")});
    return texts;
}

} // namespace host
