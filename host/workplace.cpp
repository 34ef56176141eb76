#include "host/workplace.h"

#include "host/pendingfile.h"
#include "host/settings.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace host {

namespace {

QByteArray scratch_template() {
    const QByteArray directory =
        host_settings().value("dlwmenu.ini", "env", "TMPDIR").value_or(QByteArray());
    return absolute_path(directory.isEmpty() ? QFile::encodeName(QDir::tempPath()) : directory) +
           "/printman-XXXXXX";
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
    directory_ = std::make_unique<QTemporaryDir>(QFile::decodeName(scratch_template()));
    if (!directory_->isValid())
        return Outcome::failure("cannot make a scratch directory: " +
                                QFile::encodeName(directory_->errorString()));
    before_ = ::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC);
    const QByteArray path = QFile::encodeName(directory_->path());
    if (before_ < 0 || ::chdir(path.constData()) != 0)
        return Outcome::failure("cannot work in " + path + ": " + std::strerror(errno));
    return Outcome::success();
}

} // namespace host
