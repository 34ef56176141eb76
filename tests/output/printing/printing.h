#pragma once

#include "tests/printer/setuprecords.h"
#include "tests/support/scratchnames.h"
#include "tests/support/testhost.h"
#include "tests/support/tools.h"

#include <printman/printman.h>
#include <printman/system/sharedscratch.h>

#include <QDir>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

/// A manager with a report, printers and a current directory of the test's own, which is also
/// TMPDIR and PRTINI. The fixed names in /tmp are free before and afterwards, and no other test is
/// about them meanwhile.
class Printing : public testing::Test {
protected:
    /// Who has the library's lock on the fixed names while the test runs.
    enum class JobLock {
        held, ///< the test, and so have all jobs of this process: no other program's job comes in
        free  ///< whoever takes it: the test is about that, or other processes do its jobs
    };

    explicit Printing(JobLock lock = JobLock::held);
    ~Printing() override;

    /// Adopts a report of @p pages pages of 20 x 3, with "page1", "page2", ... on them.
    void report(int pages);

    /// The standard setup file: "laser" is the queue office, "plain" gets plain text.
    void write_setup(const std::vector<printman::SetupRecord>& records) const;
    static printman::SetupRecord record(std::string_view id, std::string_view queue);

    /// Puts recording programs in the place of the tools: each writes its words to the log and, if
    /// it is to, the names of what it read into what it makes.
    enum class Stubs { make_files, only_record };
    void stub_tools(Stubs stubs = Stubs::make_files);

    /// Another body for one of them, with nothing but shell builtins on its PATH.
    void stub(const char* tool, const QByteArray& body) const;

    /// What the recording programs were called with, a line a call.
    QStringList log() const;

    QString path(const QString& name) const { return work_.filePath(name); }
    QByteArray read(const QString& name) const { return testsupport::read_file(path(name)); }
    QStringList files() const;
    QString error() const { return manager_.last_job_error(); }

    /// Those of the fixed names that are taken while no job of another process is under way.
    static QStringList shared_scratch();

    /// What a call writes to standard error.
    template <typename Call>
    static std::string said(Call call) {
        testing::internal::CaptureStderr();
        call();
        return testing::internal::GetCapturedStderr();
    }

    testsupport::ScratchNamesAlone alone_;
    printman::SharedScratch job_lock_;
    QTemporaryDir work_;
    QTemporaryDir tools_;
    QTemporaryDir reports_;
    QString before_;
    std::unique_ptr<testsupport::EnvironmentGuard> path_;
    CPrintMan manager_;
};
