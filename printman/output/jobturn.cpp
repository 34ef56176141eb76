#include <printman/output/jobturn.h>

namespace printman {

namespace {

int jobs_under_way = 0;

} // namespace

JobTurn::JobTurn() : is_first_(jobs_under_way++ == 0) {}

JobTurn::~JobTurn() {
    --jobs_under_way;
}

Result JobTurn::check() const {
    return is_first_ ? Result()
                     : Result::failure(QStringLiteral("another report is being printed"));
}

} // namespace printman
