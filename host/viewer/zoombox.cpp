#include "host/viewer/zoombox.h"

#include <QKeyEvent>

namespace host {

ZoomBox::ZoomBox(const QStringList& names, QWidget* parent) : QComboBox(parent) {
    addItems(names);
    addItem(tr("Fit page"));
    setToolTip(tr("Zoom"));
    setAccessibleName(tr("Zoom"));
    connect(this, &QComboBox::activated, this, [this](int index) {
        if (index == count() - 1)
            emit fit_chosen();
        else
            emit zoom_chosen(itemText(index));
    });
}

void ZoomBox::set_zoom(const QString& name, bool fits) {
    setCurrentIndex(fits ? count() - 1 : findText(name, Qt::MatchExactly));
}

void ZoomBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
        event->key() == Qt::Key_Escape)
        emit left();
    else
        QComboBox::keyPressEvent(event);
}

} // namespace host
