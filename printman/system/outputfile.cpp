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
    constexpr int most_links = 40;
    for (int i = 0; i < most_links; ++i) {
        const QFileInfo info(path);
        if (!info.isSymLink())
            return path;
        path = info.symLinkTarget();
    }
    return {};
}

} // namespace

OutputFile::OutputFile() = default;
OutputFile::~OutputFile() = default;

bool OutputFile::open(const QString& path) {
    discard();
    failed_ = false;
    error_.clear();
    const Target target = target_of(path);
    const QString name = target == Target::replaceable ? without_links(path) : path;
    if (name.isEmpty()) {
        error_ = qt_error_string(path.isEmpty() ? ENOENT : ELOOP);
        return false;
    }
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
        return true;
    note_failure();
    device_.reset();
    return false;
}

bool OutputFile::open(const char* path) {
    const QString name = QFile::decodeName(path);
    if (QFile::encodeName(name) == path)
        return open(name);
    discard();
    error_ = qt_error_string(EILSEQ);
    return false;
}

bool OutputFile::write(const char* data, qint64 size) {
    if (!device_ || failed_)
        return false;
    // A disk that becomes full takes what fits; only the next write says why.
    while (size > 0 && !failed_) {
        errno = 0;
        const qint64 written = device_->write(data, size);
        if (written <= 0) {
            note_failure();
        } else {
            data += written;
            size -= written;
        }
    }
    return !failed_;
}

bool OutputFile::commit() {
    if (!device_) {
        error_ = QStringLiteral("not open");
        return false;
    }
    auto* file = static_cast<QFileDevice*>(device_.get());
    errno = 0;
    if (!failed_ && (!file->flush() || file->error() != QFileDevice::NoError))
        note_failure();
    auto* save_file = qobject_cast<QSaveFile*>(file);
    if (!failed_ && save_file && !save_file->commit())
        note_failure();
    if (!failed_ && !save_file) {
        file->close();
        if (file->error() != QFileDevice::NoError)
            note_failure();
    }
    device_.reset();
    return !failed_;
}

void OutputFile::discard() {
    device_.reset();
}

void OutputFile::note_failure() {
    const int error = errno;
    failed_ = true;
    error_ = device_->errorString();
    // The toolkit forgets the reason where a part of the bytes was taken.
    if (error_ == QIODevice::tr("Unknown error"))
        error_ =
            error != 0 ? qt_error_string(error) : QStringLiteral("not everything could be written");
}

} // namespace printman
