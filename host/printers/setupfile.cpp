#include "host/printers/setupfile.h"

#include "host/files/inputfile.h"
#include "host/files/paths.h"
#include "host/files/pendingfile.h"
#include "host/settings/settings.h"

#include <cerrno>
#include <sys/stat.h>

namespace host {

QByteArray setup_file_path() {
    return host_settings().variable("PRTINI") + "/PRTSETUP.BIN";
}

Outcome check_setup_file() {
    const QByteArray path = setup_file_path();
    // The library would look for another name.
    if (!is_text(path))
        return Outcome::failure(path + ": " + not_text);
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
                                " does not exist; printman printers --make creates it");
    return check_setup_file();
}

Outcome write_setup_file(const QByteArray& path, std::span<const printman::SetupRecord> printers) {
    const std::string bytes = printman::setup_file_bytes(printers);
    PendingFile pending;
    Outcome opened = pending.open(path);
    if (!opened.ok())
        return opened;
    pending.write(QByteArray::fromStdString(bytes));
    return pending.commit();
}

QByteArray printer_not_found(const QByteArray& id) {
    return "Can not find report printer '" + id + '\'';
}

} // namespace host
