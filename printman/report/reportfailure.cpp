#include <printman/report/reportbuffer.h>
#include <printman/report/reportfailure.h>

namespace printman {

Result no_pages() {
    return Result::failure(QStringLiteral("the report has no pages"));
}

Result unreadable_page(int page) {
    return Result::failure(QStringLiteral("cannot read page %1 of the report").arg(page));
}

Result check_still_whole(const ReportBuffer& report) {
    return report.has_shrunk()
               ? Result::failure(QStringLiteral("the report became shorter while it was read"))
               : Result();
}

} // namespace printman
