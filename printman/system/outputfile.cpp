#include <printman/system/outputfile.h>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <sys/stat.h>

namespace printman {

namespace {

/// What stands under a name.
enum class Target { replaceable, device, open_stream };

Target target_of(const QString& path) {
    struct stat status {};
    const bool exists = ::stat(QFile::encodeName(path).constData(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode))
        return Target::device;
    // Names of this process's own streams: a shell may have redirected them to a regular file.
    for (const char* prefix : {"/dev/std", "/dev/fd/", "/proc/"})
        if (exists && path.startsWith(QLatin1String(prefix)))
            return Target::open_stream;
    return Target::replaceable;
}

/// Follows links to the name that is to be replaced, so that a link stays and keeps pointing there.
/// Null for a loop of links.
QString without_links(QString path) {
    constexpr int max_links = 40;
    for (int i = 0; i < max_links; ++i) {
        const QFileInfo info(path);
        if (!info.isSymLink())
            return path;
        path = info.symLinkTarget();
    }
    return {};
}

Result not_open() {
    return Result::failure(QStringLiteral("not open"));
}

} // namespace

OutputFile::OutputFile() = default;
OutputFile::~OutputFile() = default;

Result OutputFile::open(const QString& path) {
    discard();
    result_ = {};
    const Target target = target_of(path);
    const QString name = target == Target::replaceable ? without_links(path) : path;
    if (name.isEmpty())
        return Result::failure(qt_error_string(path.isEmpty() ? ENOENT : ELOOP));
    QIODevice::OpenMode mode = QIODevice::WriteOnly;
    if (target == Target::replaceable) {
        auto file = std::make_unique<QSaveFile>(name);
        file->setDirectWriteFallback(false);
        device_ = std::move(file);
    } else {
        device_ = std::make_unique<QFile>(name);
        if (target == Target::open_stream)
            mode |= QIODevice::Append;
    }
    if (device_->open(mode))
        return {};
    note_failure();
    device_.reset();
    return result_;
}

Result OutputFile::open(const char* path) {
    const QString name = QFile::decodeName(path);
    if (QFile::encodeName(name) == path)
        return open(name);
    discard();
    return Result::failure(qt_error_string(EILSEQ));
}

Result OutputFile::write(const char* data, qint64 size) {
    if (!device_)
        return not_open();
    // A disk that becomes full takes what fits; only the next write says why.
    while (size > 0 && result_.ok()) {
        errno = 0;
        const qint64 written = device_->write(data, size);
        if (written <= 0) {
            note_failure();
        } else {
            data += written;
            size -= written;
        }
    }
    return result_;
}

Result OutputFile::commit() {
    if (!device_)
        return not_open();
    auto* file = static_cast<QFileDevice*>(device_.get());
    errno = 0;
    if (result_.ok() && (!file->flush() || file->error() != QFileDevice::NoError))
        note_failure();
    auto* save_file = qobject_cast<QSaveFile*>(file);
    if (result_.ok() && save_file && !save_file->commit())
        note_failure();
    if (result_.ok() && !save_file) {
        file->close();
        if (file->error() != QFileDevice::NoError)
            note_failure();
    }
    device_.reset();
    return result_;
}

void OutputFile::discard() {
    device_.reset();
}

void OutputFile::note_failure() {
    const int error = errno;
    QString reason = device_->errorString();
    // The toolkit forgets the reason where a part of the bytes was taken.
    if (reason == QIODevice::tr("Unknown error"))
        reason =
            error != 0 ? qt_error_string(error) : QStringLiteral("not everything could be written");
    result_ = Result::failure(reason);
}

} // namespace printman
