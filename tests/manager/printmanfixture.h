#pragma once

#include "tests/support/testhost.h"
#include "tests/support/tools.h"

#include <printman/printman.h>

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// The manager in a scratch directory that is also TMPDIR.
class PrintMan : public testing::Test {
protected:
    PrintMan() {
        testhost::reset();
        testhost::set("TMPDIR", scratch_.path().toLocal8Bit());
    }
    ~PrintMan() override { testhost::reset(); }

    QByteArray path(const char* name) const {
        return scratch_.filePath(QString::fromLatin1(name)).toLocal8Bit();
    }
    QStringList files() const { return QDir(scratch_.path()).entryList(QDir::Files); }

    int adopt(const QByteArray& report) {
        testsupport::write_file(QString::fromLocal8Bit(path("r.rpt")), report);
        return manager_.init_printman(path("r.rpt").constData());
    }

    QTemporaryDir scratch_;
    CPrintMan manager_;
};

inline const QByteArray three_pages =
    "#!?PAGETOP 10,2\none\n#!?PAGEEND\n#!?PAGETOP\ntwo\n#!?PAGEEND\n"
    "#!?PAGETOP\nthree\n#!?PAGEEND\n";
