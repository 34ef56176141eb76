#pragma once

#include <printman/dialogs/printerfields.h>

#include <QString>
#include <QStringList>

#include <optional>

namespace printman {

/// A list of printers that a print manager keeps, walked from its start. The manager has one place
/// in each list, so a walk ends another.
///
/// @tparam Record what the list holds, with a field printer_id
template <typename Manager, typename Record>
class PrinterWalk {
public:
    /// A step of the walk: above 0 when the record was filled.
    using Step = int (Manager::*)(Record*);

    /// @param manager may be null, for an empty list
    PrinterWalk(Manager* manager, Step first, Step next)
        : manager_(manager), first_(first), next_(next) {}

    /// The ids of all slots of the list.
    QStringList ids() const {
        QStringList ids;
        walk([&ids](const Record& record) {
            ids << latin1_text(record.printer_id);
            return false;
        });
        return ids;
    }

    /// The first printer with that id.
    std::optional<Record> find(const QString& id) const {
        return walk([&id](const Record& record) { return latin1_text(record.printer_id) == id; });
    }

private:
    /// The first record that @p ends answers true for.
    template <typename Ends>
    std::optional<Record> walk(const Ends& ends) const {
        if (!manager_)
            return {};
        Record record;
        for (int more = (manager_->*first_)(&record); more > 0; more = (manager_->*next_)(&record))
            if (ends(record))
                return record;
        return {};
    }

    Manager* manager_;
    Step first_;
    Step next_;
};

} // namespace printman
