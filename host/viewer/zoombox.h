#pragma once

#include <QComboBox>

namespace host {

/// The list of zooms, with one more that fits the page into the window.
class ZoomBox : public QComboBox {
    Q_OBJECT

public:
    ZoomBox(const QStringList& names, QWidget* parent = nullptr);

    /// Shows that zoom, or that the page is made to fit.
    void set_zoom(const QString& name, bool fits);

signals:
    void zoom_chosen(const QString& name);
    void fit_chosen();

    /// The user is done here without a choice.
    void left();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace host
