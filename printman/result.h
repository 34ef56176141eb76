#pragma once

#include <printman/printman_export.h>

#include <QString>

namespace printman {

/// @p text with blanks and question marks for what would end its line or change a terminal.
PRINTMAN_EXPORT QString one_line(const QString& text);

/// How an operation ended: it is done, it has failed, or it was canceled. A value type.
class [[nodiscard]] PRINTMAN_EXPORT Result {
public:
    /// It is done.
    Result() = default;

    /// It has failed for the reason @p error, which is made one_line(). An empty reason becomes
    /// "unknown error", so that no failure looks like a success.
    static Result failure(const QString& error);

    /// The same of a file: "NAME: reason".
    static Result file_failure(const QString& name, const QString& reason);

    /// An external program has failed.
    ///
    /// @param tool its name
    /// @param end  how it ended, such as "failed with status 1"
    /// @param error the whole line, which also says with what the program was called
    static Result tool_failure(const QString& tool, const QString& end, const QString& error);

    /// It was stopped by its progress function or by the host. Its error is "canceled".
    static Result canceled();

    /// The user canceled a dialog before it began. It has no error.
    static Result declined();

    bool ok() const { return kind_ == Kind::done; }
    bool is_canceled() const { return kind_ == Kind::canceled; }

    /// What went wrong; empty when nothing did.
    const QString& error() const { return error_; }

    /// The external program that ran and failed, and how it ended; empty for any other failure.
    const QString& tool() const { return tool_; }
    const QString& tool_end() const { return tool_end_; }

private:
    enum class Kind { done, failed, canceled };

    Result(Kind kind, const QString& error) : kind_(kind), error_(error) {}

    Kind kind_ = Kind::done;
    QString error_;
    QString tool_;
    QString tool_end_;
};

} // namespace printman
