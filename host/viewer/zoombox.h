#pragma once

#include <QComboBox>

namespace host {

/// A list of zooms with one more entry, which fits the page to the window.
class ZoomBox : public QComboBox {
    Q_OBJECT

public:
    ZoomBox(const QStringList& names, QWidget* parent = nullptr);

    /// Shows that zoom, or that the page is fitted.
    void set_zoom(const QString& name, bool fits);

signals:
    void zoom_chosen(const QString& name);
    void fit_chosen();

    /// The user leaves the list without a choice.
    void left();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace host
