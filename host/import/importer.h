#pragma once

#include "host/files/outcome.h"
#include "host/import/listing.h"

#include <functional>

namespace host {

/// The size of the report that is written.
struct ReportSize {
    int columns = 0;
    int lines = 0;
    long long pages = 0;
};

/// Is told how many bytes of the listing's @p total are done, in each of the two passes.
///
/// @return false to stop the import
using ImportProgress = std::function<bool(long long done, long long total)>;

/// Makes the report file @p out of the plain-text file @p listing, in two passes over it. On
/// failure @p out is as it was.
///
/// @param rules    columns 0: one more than the longest line, so that hosts whose text drops
///                 the last column of a full line lose nothing; page lines 0: those of the
///                 longest page, or 66 in a listing that does not mark its page ends
/// @param progress may be empty
Outcome import_listing(const QByteArray& listing, const QByteArray& out, const ListingRules& rules,
                       const ImportProgress& progress = {});

} // namespace host
