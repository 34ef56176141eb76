#include <printman/system/outputfile.h>
#include <printman/system/outputsink.h>
#include <printman/system/scratchname.h>

#include <QFile>

#include <cerrno>
#include <unistd.h>

namespace printman {

namespace {

class FileSink : public OutputSink {
public:
    explicit FileSink(QString path) : path_(std::move(path)) {}

    bool open() override { return file_.open(path_) || fail(file_.error()); }
    bool write(std::string_view bytes) override {
        return file_.write(bytes.data(), static_cast<qint64>(bytes.size())) || fail(file_.error());
    }
    bool close() override { return file_.commit() || fail(file_.error()); }
    void discard() override { file_.discard(); }

private:
    QString path_;
    OutputFile file_;
};

/// A file at a fixed scratch name: made anew, and nothing is left of it when the job fails.
class ScratchSink : public OutputSink {
public:
    explicit ScratchSink(const QString& path) : path_(QFile::encodeName(path)) {}
    ~ScratchSink() override { ScratchSink::discard(); }

    bool open() override {
        QString why;
        fd_ = create_scratch_file(path_, why);
        return fd_ >= 0 || fail(why);
    }
    bool write(std::string_view bytes) override {
        while (!bytes.empty()) {
            const ssize_t n = ::write(fd_, bytes.data(), bytes.size());
            if (n >= 0)
                bytes.remove_prefix(static_cast<size_t>(n));
            else if (errno != EINTR)
                return fail_with(errno);
        }
        return true;
    }
    bool close() override {
        const int error = ::close(fd_) == 0 ? 0 : errno;
        fd_ = -1;
        if (error == 0)
            return true;
        ::unlink(path_.constData());
        return fail_with(error);
    }
    void discard() override {
        if (fd_ < 0)
            return;
        ::close(fd_);
        ::unlink(path_.constData());
        fd_ = -1;
    }

private:
    bool fail_with(int error) {
        return fail(QFile::decodeName(path_) + QStringLiteral(": ") + qt_error_string(error));
    }

    QByteArray path_;
    int fd_ = -1;
};

} // namespace

std::unique_ptr<OutputSink> make_file_sink(const QString& path) {
    return std::make_unique<FileSink>(path);
}

std::unique_ptr<OutputSink> make_scratch_sink(const QString& path) {
    return std::make_unique<ScratchSink>(path);
}

} // namespace printman
