#include "tests/support/testhost.h"

#include <printman/printer/hostservices.h>

#include <QHash>

namespace {

QHash<QByteArray, QByteArray>& settings() {
    static QHash<QByteArray, QByteArray> table;
    return table;
}

QStringList& recorded() {
    static QStringList list;
    return list;
}

std::function<void()>& action() {
    static std::function<void()> called;
    return called;
}

void record(const char* service, std::initializer_list<const char*> arguments) {
    QStringList texts;
    for (const char* argument : arguments)
        texts << QString::fromLatin1(argument);
    recorded() << QString::fromLatin1(service) + u'(' + texts.join(QStringLiteral(", ")) + u')';
    if (action())
        action()();
}

} // namespace

namespace testhost {

void set(const QByteArray& key, const QByteArray& value) {
    settings()[key] = value;
}

void reset() {
    settings().clear();
    recorded().clear();
    action() = {};
}

void on_call(std::function<void()> called) {
    action() = std::move(called);
}

QStringList calls() {
    return recorded();
}

} // namespace testhost

extern "C" {

int GetPrivateProfileString(const char* section, const char* key, const char* default_text,
                            char* buffer, int size, const char* file) {
    record("GetPrivateProfileString", {section, key, default_text, file});
    const QByteArray value = settings().value(key, default_text).left(size - 1);
    qstrncpy(buffer, value.constData(), size);
    return static_cast<int>(value.size());
}

const char* GetEnv(const char* key, const char* file, const char* section) {
    record("GetEnv", {key, file, section});
    static QByteArray value;
    if (!settings().contains(key))
        return nullptr;
    value = settings().value(key);
    return value.constData();
}

int SetEnv(const char* entry, const char* file, const char* section, int flag) {
    record("SetEnv", {entry, file, section, QByteArray::number(flag).constData()});
    const QByteArray text(entry);
    const qsizetype equals = text.indexOf('=');
    settings()[text.left(equals)] = text.mid(equals + 1);
    return 1;
}

void GetRGB(const char* key, int* red, int* green, int* blue) {
    record("GetRGB", {key});
    const QList<QByteArray> parts = settings().value(key, "0,0,0").split(',');
    *red = parts.value(0).toInt();
    *green = parts.value(1).toInt();
    *blue = parts.value(2).toInt();
}
}
