#include "host/jobs/jobdirectory.h"

#include "host/files/pendingfile.h"
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
    const QByteArray directory =
        host_settings().value("dlwmenu.ini", "env", "TMPDIR").value_or(QByteArray());
    return absolute_path(directory.isEmpty() ? QFile::encodeName(QDir::tempPath()) : directory);
}

} // namespace

WorkPlace::~WorkPlace() {
    if (before_ < 0)
        return;
    // Without a way back, a directory that always is there does less harm than one that is gone.
    if (::fchdir(before_) != 0 && ::chdir("/") != 0)
        directory_->setAutoRemove(false);
    ::close(before_);
}

Outcome WorkPlace::enter() {
    const QByteArray parent = scratch_directory();
    const auto failure = [&parent](const QByteArray& why) {
        return Outcome::failure("cannot make a scratch directory in " + parent + ": " + why);
    };
    if (!is_text(parent))
        return failure("The name is not valid in the locale's encoding");
    directory_ = std::make_unique<QTemporaryDir>(QFile::decodeName(parent + "/printman-XXXXXX"));
    if (!directory_->isValid())
        return failure(QFile::encodeName(directory_->errorString()));
    before_ = ::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC);
    const QByteArray path = QFile::encodeName(directory_->path());
    if (before_ < 0 || ::chdir(path.constData()) != 0)
        return Outcome::failure("cannot work in " + path + ": " + std::strerror(errno));
    tools_scratch_.emplace("TMPDIR", path);
    return Outcome::success();
}

} // namespace host
