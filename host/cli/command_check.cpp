#include "host/cli/command.h"
#include "host/cli/console.h"
#include "host/files/inputfile.h"
#include "host/jobs/interrupt.h"

#include <printman/report/reportcheck.h>

#include <cstring>

namespace host {

namespace {

Outcome run_check(const Arguments& arguments) {
    const QByteArray path = arguments.operand(0);
    Outcome readable = check_input(path);
    if (!readable.ok())
        return readable;
    long long faults = 0;
    const auto sink = [&](const printman::ReportFault& fault) {
        ++faults;
        QByteArray line = path;
        if (fault.line > 0)
            line += ':' + QByteArray::number(static_cast<qlonglong>(fault.line));
        return print(one_line(line + ": " + QByteArray::fromStdString(fault.what)) + '\n');
    };
    const ExitOnInterrupt at_once;
    const int code = printman::check_report(path.toStdString(), sink);
    if (code != 0)
        return Outcome::failure(path + ": " + std::strerror(code));
    Outcome printed = flush_output();
    if (!printed.ok())
        return printed;
    if (faults > 0)
        return Outcome::failure(QByteArray::number(faults) + (faults == 1 ? " fault" : " faults") +
                                " in " + path);
    print("no faults\n");
    return Outcome::success();
}

} // namespace

const Command check_command{
    .name = "check",
    .operands = {"REPORT"},
    .summary = "find the faults of a report",
    .description =
        "Reads REPORT and lists each fault as \"REPORT:LINE: text\" on standard output, or\n"
        "says \"no faults\". The exit status is 1 when there is any.",
    .options = {},
    .examples = "printman check aging.rpt",
    .run = run_check,
};

} // namespace host
