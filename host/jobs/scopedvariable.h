#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace host {

/// A variable of the environment that has another value for a while, for the tools that are run
/// meanwhile too. Of several for one variable the last goes first.
class VariableMeanwhile {
public:
    VariableMeanwhile(const char* name, const QByteArray& value)
        : name_(name), was_set_(qEnvironmentVariableIsSet(name)), was_(qgetenv(name)) {
        qputenv(name, value);
    }
    ~VariableMeanwhile() {
        if (was_set_)
            qputenv(name_, was_);
        else
            qunsetenv(name_);
    }
    VariableMeanwhile(const VariableMeanwhile&) = delete;
    VariableMeanwhile& operator=(const VariableMeanwhile&) = delete;

private:
    const char* name_;
    bool was_set_;
    QByteArray was_;
};

} // namespace host
