#pragma once

#include <QCoreApplication>
#include <QTranslator>

namespace testsupport {

/// While it lives the program speaks a language in which every text is three times as long.
class LongLanguage : public QTranslator {
public:
    LongLanguage() { QCoreApplication::installTranslator(this); }
    ~LongLanguage() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char* /*context*/, const char* text, const char* /*hint*/,
                      int /*count*/) const override {
        return QString::fromUtf8(text).repeated(3);
    }
    bool isEmpty() const override { return false; }
};

} // namespace testsupport
