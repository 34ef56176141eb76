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

    Result open() override { return named(file_.open(path_)); }
    Result write(std::string_view bytes) override {
        return named(file_.write(bytes.data(), static_cast<qint64>(bytes.size())));
    }
    Result close() override { return named(file_.commit()); }
    void discard() override { file_.discard(); }

private:
    /// A failure with the file's name.
    Result named(const Result& result) const {
        return result.ok() ? result : Result::file_failure(path_, result.error());
    }

    QString path_;
    OutputFile file_;
};

/// A file at a fixed scratch name: made anew, and nothing is left of it when the job fails.
class ScratchSink : public OutputSink {
public:
    explicit ScratchSink(const QString& path) : path_(QFile::encodeName(path)) {}
    ~ScratchSink() override { ScratchSink::discard(); }

    Result open() override { return create_scratch_file(path_, fd_); }
    Result write(std::string_view bytes) override {
        while (!bytes.empty()) {
            const ssize_t n = ::write(fd_, bytes.data(), bytes.size());
            if (n >= 0)
                bytes.remove_prefix(static_cast<size_t>(n));
            else if (errno != EINTR)
                return failure(errno);
        }
        return {};
    }
    Result close() override {
        const int error = ::close(fd_) == 0 ? 0 : errno;
        fd_ = -1;
        if (error == 0)
            return {};
        ::unlink(path_.constData());
        return failure(error);
    }
    void discard() override {
        if (fd_ < 0)
            return;
        ::close(fd_);
        ::unlink(path_.constData());
        fd_ = -1;
    }

private:
    Result failure(int error) const {
        return Result::file_failure(QFile::decodeName(path_), qt_error_string(error));
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
