#pragma once

#include <QTemporaryDir>

namespace testsupport {

/// A directory of this process's own for what the toolkit keeps for a user: tests neither find what
/// others have left there nor leave anything.
class OwnHome {
public:
    OwnHome() {
        for (const char* variable :
             {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
            qputenv(variable, directory_.path().toLocal8Bit());
    }

private:
    QTemporaryDir directory_;
};

} // namespace testsupport
