#include "host/cli/commandline.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace {

QString page(const QByteArray& name) {
    QFile file(QStringLiteral(PRINTMAN_SOURCE_DIR "/docs/man/%1.1").arg(QString::fromLatin1(name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.constData();
    return QString::fromUtf8(file.readAll());
}

QSet<QString> options_of(const QString& text) {
    QSet<QString> options;
    const QRegularExpression option(QStringLiteral("--([a-z][a-z-]*)"));
    for (auto match = option.globalMatch(text); match.hasNext();)
        options << match.next().captured(1);
    return options;
}

/// Options as a man page's OPTIONS section tells them, without the escapes of its dashes.
QSet<QString> manual_options(const QByteArray& name) {
    QString text = page(name);
    text.replace(QStringLiteral("\\-"), QStringLiteral("-"));
    const QRegularExpression section(QStringLiteral("\n\\.SH OPTIONS\n(.*?)\n\\.SH "),
                                     QRegularExpression::DotMatchesEverythingOption);
    QSet<QString> options;
    const QString body = section.match(text).captured(1);
    for (const QString& line : body.split(u'\n')) {
        if (line.startsWith(QStringLiteral(".B")))
            options.unite(options_of(line));
    }
    return options;
}

/// Options as a help text's list tells them: at the start of a line.
QSet<QString> help_options(const QByteArray& help) {
    QSet<QString> options;
    for (const QByteArray& line : help.split('\n')) {
        if (line.startsWith("  -"))
            options.unite(options_of(QString::fromLatin1(line.left(24))));
    }
    return options;
}

} // namespace

TEST(Manual, everyOptionOfTheHelpStandsInTheManPageAndTheReverse) {
    EXPECT_EQ(manual_options("printman"), help_options(host::program_help()));
    for (const host::Command* command : host::commands())
        EXPECT_EQ(manual_options(QByteArray("printman-") + command->name),
                  help_options(host::command_help(*command)))
            << command->name;
}

TEST(Manual, thePagesNameTheirCommandAndItsOperands) {
    const QString whole = page("printman");
    ASSERT_FALSE(host::commands().empty());
    for (const host::Command* command : host::commands()) {
        const QByteArray name = QByteArray("printman-") + command->name;
        const QString text = page(name);
        EXPECT_TRUE(text.contains(QStringLiteral(".TH PRINTMAN-") +
                                  QString::fromLatin1(command->name).toUpper()));
        for (const char* operand : command->operands)
            EXPECT_TRUE(text.contains(QString::fromLatin1(operand))) << operand;
        QString listed = QString::fromLatin1(name);
        listed.replace(u'-', QStringLiteral("\\-"));
        EXPECT_TRUE(whole.contains(listed)) << name.constData();
    }
}
