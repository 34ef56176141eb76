#pragma once

#include <printman/result.h>

#include <QByteArray>

#include <sys/types.h>

namespace printman {

/// Makes the fixed scratch name @p path safe to write to: what someone else left there is never
/// written through. A symbolic link is removed, and so is a second name of one's own file.
///
/// @param owner whose files count as one's own
/// @return a failure when the name must not be written: another user's file stands there, or
///         something that is neither a file nor a link. It is then as it was.
Result claim_scratch_name(const QByteArray& path, uid_t owner);

/// The same with the user of this process as the owner.
Result claim_scratch_name(const QByteArray& path);

/// Claims @p path and makes a new empty file there, readable and writable by its owner alone; an
/// earlier file of one's own is replaced. Whoever hands the name to another program makes the file
/// first: in a directory such as /tmp nobody can then put something else in its place.
///
/// @param fd receives a descriptor for writing, closed when a program is started; -1 on failure
Result create_scratch_file(const QByteArray& path, int& fd);

/// The same for a file that somebody else writes.
Result create_scratch_file(const QByteArray& path);

} // namespace printman
