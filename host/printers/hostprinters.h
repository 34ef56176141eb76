#pragma once

#include "host/printers/localprinterini.h"

#include <printman/printer/setuprecord.h>

#include <QList>

#include <optional>
#include <vector>

class CPrintMan;

namespace host {

class Settings;

/// The printers on which this host prints as its own server, from the settings directory: those
/// that it defines itself, with font and paper, in dlwserver.ini, and the queues of the system in
/// dlwunix.ini. Where there is any of the latter the library offers only those.
class HostPrinters {
public:
    std::vector<printman::SetupRecord> defined;
    std::vector<LocalPrinter> local;

    /// The errors of the lists that cannot be read, one for each; such a list is empty.
    QList<QByteArray> errors;

    static HostPrinters read(const Settings& settings);

    /// Hands both lists to a manager that has none yet. Texts are cut to their fields.
    void hand_to(CPrintMan& manager) const;

    bool empty() const { return defined.empty() && local.empty(); }

    /// Whether both are the same printers.
    bool same_as(const HostPrinters& other) const;
};

/// A printer of a server job: the page setup, and the spooler's queue that gets the pages.
struct ServerPrinter {
    printman::SetupRecord setup;
    QByteArray queue;
};

/// The printer of that id: a queue of the system, with font and paper of the defined printer of the
/// same id, else the default ones; or a defined printer.
std::optional<ServerPrinter> find_server_printer(const HostPrinters& printers,
                                                 const QByteArray& id);

/// A printer as the library's dialogs show it.
WinPrtSetup shown_printer(const printman::SetupRecord& printer);
UnixPrtSetup shown_printer(const LocalPrinter& printer);

} // namespace host
