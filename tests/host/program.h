#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <ostream>

/// How a failed test shows the toolkit's texts.
inline void PrintTo(const QByteArray& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

/// What a run of the program came to.
struct Ended {
    int status = -1; ///< exit status; -1 when it crashed or did not end
    QByteArray out;
    QByteArray error;
};

/// Tests that run the program as a user does: in a directory of their own, with an environment that
/// holds nothing of the caller's settings.
class ProgramTest : public testing::Test {
protected:
    void SetUp() override;

    /// Runs the program in the test's directory.
    Ended run(const QStringList& arguments) const { return run_program(program(), arguments); }

    /// Runs another program there.
    Ended run_program(const QString& file, const QStringList& arguments) const;

    /// Runs the program on a terminal of its own; what it writes there is the output. As soon as
    /// it has written @p words, @p then is called.
    Ended on_terminal(const QStringList& arguments, const QByteArray& words,
                      const std::function<void()>& then) const;

    /// Runs the program, and sends it signal @p number as soon as @p ready says so or it has ended.
    Ended interrupt(const QStringList& arguments, int number,
                    const std::function<bool()>& ready) const;

    static QString program();

    QString path(const QString& name) const { return directory_.filePath(name); }
    void write(const QString& name, const QByteArray& bytes) const;
    QByteArray read(const QString& name) const;
    bool exists(const QString& name) const;

    /// Everything in the test's directory, hidden files too.
    QStringList files() const;

    /// Everything that is left in the directory for scratch files.
    QStringList scratch() const;

    /// Makes a shell script the only tool of that name that the program finds.
    void stub(const char* tool, const QByteArray& script);
    void stub_ps2pdf(const QByteArray& script) { stub("ps2pdf", script); }

    /// That the run failed with status 1 and exactly this line on standard error.
    static void expect_failure(const Ended& run, const QByteArray& line);

    QTemporaryDir directory_;
    QTemporaryDir scratch_;
    QTemporaryDir tools_;
    QProcessEnvironment environment_;

private:
    void prepare(QProcess& process) const;
};

/// A report of one page of 80 x 3.
extern const QByteArray small_report;
