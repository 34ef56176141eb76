#pragma once

#include "host/settings/settings.h"

#include <QList>
#include <QString>

namespace host {

/// Puts @p path at the head of a list of recent files, once, and cuts the list to its length.
QList<QByteArray> with_recent(QList<QByteArray> files, const QByteArray& path);

/// A list of file names as one line of printable characters, and back. Names are bytes. Names that
/// are not absolute, and those beyond the list's length, are left out.
QByteArray encode_recent(const QList<QByteArray>& files);
QList<QByteArray> decode_recent(const QByteArray& line);

/// What the viewer keeps from one run to the next, in a file of a directory for such state. The
/// file is read for every question, so that two viewers share the list of recent files. Its content
/// is checked; where it cannot be written nothing is kept.
class ViewerState {
public:
    explicit ViewerState(const QByteArray& directory) : settings_(directory) {}

    /// The absolute names of the files that were opened last, the last one first.
    QList<QByteArray> recent() const;
    void add_recent(const QByteArray& path) const;
    void remove_recent(const QByteArray& path) const;
    void clear_recent() const;

    /// The window's place on the screen, as QWidget::saveGeometry() returns it; empty for none.
    QByteArray geometry() const;
    void keep_geometry(const QByteArray& geometry) const;

    /// The name of the zoom that was in use; empty for none.
    QString zoom() const;
    void keep_zoom(const QString& name) const;

    /// Whether the part of the window with that @p name ("toolbar") was shown.
    bool shows(const char* name) const;
    void keep_shown(const char* name, bool shown) const;

private:
    QByteArray value(const char* key) const;
    void keep(const char* key, const QByteArray& value) const;

    Settings settings_;
};

/// "printman" under XDG_STATE_HOME when that is an absolute path, else under ~/.local/state.
QByteArray default_state_directory();

} // namespace host
