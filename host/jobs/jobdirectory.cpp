#include "host/jobs/jobdirectory.h"

#include "host/files/paths.h"
#include "host/settings/settings.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace host {

namespace {

QByteArray scratch_directory() {
    const QByteArray directory = host_settings().variable("TMPDIR");
    return absolute_path(directory.isEmpty() ? QFile::encodeName(QDir::tempPath()) : directory);
}

} // namespace

JobDirectory::~JobDirectory() {
    if (earlier_ < 0)
        return;
    // When the earlier directory is gone, "/" is better than a removed one.
    if (::fchdir(earlier_) != 0 && ::chdir("/") != 0)
        directory_->setAutoRemove(false);
    ::close(earlier_);
}

Outcome JobDirectory::enter() {
    const QByteArray parent = scratch_directory();
    const auto failure = [&parent](const QByteArray& error) {
        return Outcome::failure("cannot create a temporary directory in " + parent + ": " + error);
    };
    if (!is_text(parent))
        return failure(not_text);
    directory_ = std::make_unique<QTemporaryDir>(QFile::decodeName(parent + "/printman-XXXXXX"));
    if (!directory_->isValid())
        return failure(QFile::encodeName(directory_->errorString()));
    earlier_ = ::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC);
    const QByteArray path = QFile::encodeName(directory_->path());
    if (earlier_ < 0 || ::chdir(path.constData()) != 0)
        return Outcome::failure("cannot work in " + path + ": " + std::strerror(errno));
    tools_scratch_.emplace("TMPDIR", path);
    return Outcome::success();
}

} // namespace host
