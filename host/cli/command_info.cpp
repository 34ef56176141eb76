#include "host/cli/command.h"
#include "host/cli/console.h"
#include "host/jobs/openreport.h"

#include <printman/printman.h>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace host {

namespace {

Outcome run_info(const Arguments& arguments) {
    const QByteArray path = arguments.operand(0);
    CPrintMan manager;
    Outcome opened = open_report(manager, path);
    if (!opened.ok())
        return opened;
    struct stat status {};
    if (::stat(path.constData(), &status) != 0)
        return Outcome::failure(path + ": " + std::strerror(errno));
    print("columns: " + QByteArray::number(manager.get_columns()) +
          "\nlines: " + QByteArray::number(manager.get_lines()) +
          "\npages: " + QByteArray::number(manager.get_page_count()) +
          "\nbytes: " + QByteArray::number(static_cast<qlonglong>(status.st_size)) + '\n');
    return Outcome::success();
}

} // namespace

const Command info_command{
    .name = "info",
    .operands = {"REPORT"},
    .summary = "show the size of a report",
    .description = "Shows the columns and lines of a page of REPORT, the number of its pages and\n"
                   "its size in bytes, each on a line \"name: value\".",
    .options = {},
    .examples = "printman info aging.rpt",
    .run = run_info,
};

} // namespace host
