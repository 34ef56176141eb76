#include "host/jobs/jobdirectory.h"
#include "host/jobs/scopedvariable.h"

#include <printman/printer/hostservices.h>

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(JobDirectory, isTheScratchDirectoryWhileItLives) {
    const QTemporaryDir parent;
    const QString before = QDir::currentPath();
    const QByteArray outside = parent.path().toLocal8Bit();
    const host::ScopedVariable variable("TMPDIR", outside);
    QString inside;
    {
        host::JobDirectory directory;
        ASSERT_EQ(directory.enter().message, "");
        inside = QDir::currentPath();
        EXPECT_TRUE(inside.startsWith(parent.path() + QStringLiteral("/printman-")));
        EXPECT_EQ(qgetenv("TMPDIR"), inside.toLocal8Bit());
        EXPECT_STREQ(GetEnv("TMPDIR", "dlwmenu.ini", "env"), inside.toLocal8Bit().constData());
        {
            host::JobDirectory nested;
            ASSERT_EQ(nested.enter().message, "");
            EXPECT_TRUE(QDir::currentPath().startsWith(inside + u'/'));
        }
        EXPECT_EQ(QDir::currentPath(), inside);
        EXPECT_EQ(qgetenv("TMPDIR"), inside.toLocal8Bit());
    }
    EXPECT_EQ(QDir::currentPath(), before);
    EXPECT_EQ(qgetenv("TMPDIR"), outside);
    EXPECT_TRUE(QDir(parent.path()).isEmpty());
}

TEST(JobDirectory, leavesAVariableThatWasNotSetUnset) {
    const QByteArray before = qgetenv("TMPDIR");
    qunsetenv("TMPDIR");
    {
        host::JobDirectory directory;
        ASSERT_EQ(directory.enter().message, "");
        EXPECT_TRUE(qEnvironmentVariableIsSet("TMPDIR"));
    }
    EXPECT_FALSE(qEnvironmentVariableIsSet("TMPDIR"));
    if (!before.isNull())
        qputenv("TMPDIR", before);
}

TEST(JobDirectory, aDirectoryWhoseNameIsNoTextIsRefused) {
    const host::ScopedVariable variable("TMPDIR", "/tmp/\xff");
    host::JobDirectory directory;
    EXPECT_EQ(directory.enter().message,
              "cannot create a temporary directory in /tmp/\xff: The name is "
              "not valid in the locale's encoding");
}
