#pragma once

#include "host/files/outcome.h"
#include "host/import/listing.h"

namespace host {

/// The pages that a report is made with.
struct ReportSize {
    int columns = 0;
    int lines = 0;
    long long pages = 0;
};

/// Makes the report file @p out of the plain-text file @p listing, in two passes over it.
///
/// @param rules columns 0: one more than the longest line, so that the text export, which drops the
///              last column of a full line, loses nothing; page lines 0: those of the longest page,
///              or 66 in a listing that does not say where its pages end
Outcome import_listing(const QByteArray& listing, const QByteArray& out, const ListingRules& rules);

} // namespace host
