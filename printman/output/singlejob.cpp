#include <printman/output/singlejob.h>

namespace printman {

namespace {

int jobs_under_way = 0;

} // namespace

SingleJob::SingleJob() : is_first_(jobs_under_way++ == 0) {}

SingleJob::~SingleJob() {
    --jobs_under_way;
}

Result SingleJob::check() const {
    return is_first_ ? Result()
                     : Result::failure(QStringLiteral("another report is being printed"));
}

} // namespace printman
