#include "host/printers/setupfile.h"

#include "host/files/pendingfile.h"
#include "host/jobs/report.h"
#include "host/settings/settings.h"

#include <cerrno>
#include <sys/stat.h>

namespace host {

QByteArray setup_file_path() {
    return host_settings().value("dlwmenu.ini", "env", "PRTINI").value_or(QByteArray()) +
           "/PRTSETUP.BIN";
}

Outcome check_setup_file() {
    const QByteArray path = setup_file_path();
    // The library would look for another name.
    if (!is_text(path))
        return Outcome::failure(path + ": The name is not valid in the locale's encoding");
    struct stat status {};
    const bool is_empty =
        ::stat(path.constData(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size == 0;
    return is_empty ? Outcome::success() : check_input(path);
}

Outcome check_setup_file_for(const QByteArray& id) {
    const QByteArray path = setup_file_path();
    struct stat status {};
    if (::stat(path.constData(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR))
        return Outcome::failure(printer_not_found(id) + ": " + path +
                                " does not exist; printman printers --make makes one");
    return check_setup_file();
}

Outcome write_setup_file(const QByteArray& path, std::span<const printman::SetupRecord> printers) {
    const std::string bytes = printman::setup_file_bytes(printers);
    PendingFile pending;
    return pending.open(path) && pending.write(QByteArray::fromStdString(bytes)) && pending.commit()
               ? Outcome::success()
               : Outcome::failure(pending.error());
}

QByteArray printer_not_found(const QByteArray& id) {
    return "Can not find report printer '" + id + '\'';
}

} // namespace host
