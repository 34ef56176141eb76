#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace printman {

/// Makes the fixed scratch name @p path safe to write to: what someone else left there is never
/// written through. A symbolic link is removed, and so is a second name of one's own file.
///
/// @param owner whose files count as one's own
/// @return empty; else why the name must not be written, and it is then as it was: another user's
///         file, or something that is neither a file nor a link
QString claim_scratch_name(const QByteArray& path, uid_t owner);

/// The same with the user of this process as the owner.
QString claim_scratch_name(const QByteArray& path);

/// Claims @p path and makes a new empty file there, readable and writable by its owner alone; an
/// earlier file of one's own is replaced. Whoever hands the name to another program makes the file
/// first: in a directory such as /tmp nobody can then put something else in its place.
///
/// @param error receives why it failed
/// @return a descriptor for writing, closed when a program is started; -1 on failure
int create_scratch_file(const QByteArray& path, QString& error);

} // namespace printman
