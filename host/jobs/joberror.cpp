#include "host/jobs/joberror.h"

#include "host/jobs/tool.h"

#include <QFile>

namespace host {

Outcome job_outcome(const printman::Result& job, const QByteArray& output) {
    if (job.ok())
        return Outcome::success();
    if (job.is_canceled())
        return Outcome::failure("interrupted");
    if (job.tool().isEmpty())
        return Outcome::failure(QFile::encodeName(job.error()));
    const QByteArray line = QFile::encodeName(job.tool() + u' ' + job.tool_end());
    const QByteArray words = first_words(output);
    return Outcome::failure(words.isEmpty() ? line : line + ": " + words);
}

} // namespace host
