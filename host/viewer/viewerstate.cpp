#include "host/viewer/viewerstate.h"

namespace host {

namespace {

constexpr qsizetype max_recent = 10;
constexpr qsizetype max_name = 4096;

constexpr const char* state_file = "viewer.ini";
constexpr const char* section = "viewer";

} // namespace

QList<QByteArray> with_recent(QList<QByteArray> files, const QByteArray& path) {
    files.removeAll(path);
    files.prepend(path);
    if (files.size() > max_recent)
        files.resize(max_recent);
    return files;
}

QByteArray encode_recent(const QList<QByteArray>& files) {
    QByteArray line;
    for (const QByteArray& file : files)
        line += (line.isEmpty() ? "" : " ") + file.toPercentEncoding("/");
    return line;
}

QList<QByteArray> decode_recent(const QByteArray& line) {
    QList<QByteArray> files;
    for (const QByteArray& code : line.split(' ')) {
        const QByteArray file = QByteArray::fromPercentEncoding(code);
        if (files.size() < max_recent && file.startsWith('/') && file.size() <= max_name &&
            !file.contains('\0') && !files.contains(file))
            files << file;
    }
    return files;
}

QByteArray ViewerState::value(const char* key) const {
    return settings_.file_value(state_file, section, key).value_or(QByteArray());
}

void ViewerState::keep(const char* key, const QByteArray& text) const {
    if (settings_.file_value(state_file, section, key) != text)
        settings_.store(state_file, section, {{key, text}});
}

QList<QByteArray> ViewerState::recent() const {
    return decode_recent(value("recent"));
}

void ViewerState::add_recent(const QByteArray& path) const {
    keep("recent", encode_recent(with_recent(recent(), path)));
}

void ViewerState::remove_recent(const QByteArray& path) const {
    QList<QByteArray> files = recent();
    files.removeAll(path);
    keep("recent", encode_recent(files));
}

void ViewerState::clear_recent() const {
    keep("recent", {});
}

QByteArray ViewerState::geometry() const {
    return QByteArray::fromBase64(value("geometry"));
}

void ViewerState::keep_geometry(const QByteArray& geometry) const {
    keep("geometry", geometry.toBase64());
}

QString ViewerState::zoom() const {
    return QString::fromLatin1(value("zoom"));
}

void ViewerState::keep_zoom(const QString& name) const {
    keep("zoom", name.toLatin1());
}

bool ViewerState::shows(const char* name) const {
    return value(name) != "hidden";
}

void ViewerState::keep_shown(const char* name, bool shown) const {
    keep(name, shown ? "shown" : "hidden");
}

QByteArray default_state_directory() {
    return user_directory("XDG_STATE_HOME", ".local/state");
}

} // namespace host
