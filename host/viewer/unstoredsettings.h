#pragma once

#include <QCoreApplication>

namespace host {

class Messages;

/// Tells the user, once, that settings cannot be stored.
class UnstoredSettings {
    Q_DECLARE_TR_FUNCTIONS(host::UnstoredSettings)

public:
    /// @param messages outlives this object
    explicit UnstoredSettings(Messages& messages) : messages_(messages) {}

    /// Notes a choice that no settings file can hold.
    void add() { has_unstorable_ = true; }

    /// Tells the user if the host's settings have anything that is not stored, or there is a choice
    /// of add().
    void report_once();

private:
    Messages& messages_;
    bool has_unstorable_ = false;
    bool is_reported_ = false;
};

} // namespace host
