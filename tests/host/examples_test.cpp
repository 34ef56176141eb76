#include "tests/host/program.h"

#include <QFile>

namespace {

class Examples : public ProgramTest, public testing::WithParamInterface<const char*> {
protected:
    static QString report() {
        return QStringLiteral(PRINTMAN_SOURCE_DIR "/examples/%1.rpt")
            .arg(QString::fromLatin1(GetParam()));
    }
};

} // namespace

TEST_P(Examples, theGeneratorMakesTheCheckedInReport) {
    const Ended made = run_program(
        QStringLiteral(PRINTMAN_EXAMPLES "/example_%1").arg(QString::fromLatin1(GetParam())), {});
    EXPECT_EQ(made.status, 0);
    QFile file(report());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(made.out == file.readAll());
}

TEST_P(Examples, theReportHasNoFaults) {
    const Ended result = run({QStringLiteral("check"), report()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "no faults\n");
    EXPECT_EQ(result.error, "");
}

TEST_P(Examples, theTextFitsItsColumns) {
    ASSERT_EQ(run({QStringLiteral("text"), report(), QStringLiteral("out.txt")}).status, 0);
    const QByteArray text = read(QStringLiteral("out.txt"));
    EXPECT_FALSE(text.contains("#!?"));
    const Ended info = run({QStringLiteral("info"), report()});
    const QList<QByteArray> values = info.out.split('\n');
    ASSERT_GE(values.size(), 3);
    const qsizetype lines = values[1].mid(7).toInt() * values[2].mid(7).toInt();
    EXPECT_EQ(text.count('\n'), lines);
}

INSTANTIATE_TEST_SUITE_P(All, Examples, testing::Values("aging", "stocklist", "statement"),
                         [](const auto& name) { return std::string(name.param); });
