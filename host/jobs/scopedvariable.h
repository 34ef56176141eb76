#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace host {

/// Sets a variable of the environment, for this process and the tools that it starts, and restores
/// it when the object is destroyed. Several for one variable are destroyed in reverse order.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const QByteArray& value)
        : name_(name), was_set_(qEnvironmentVariableIsSet(name)), earlier_(qgetenv(name)) {
        qputenv(name, value);
    }
    ~ScopedVariable() {
        if (was_set_)
            qputenv(name_, earlier_);
        else
            qunsetenv(name_);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    const char* name_;
    bool was_set_;
    QByteArray earlier_;
};

} // namespace host
