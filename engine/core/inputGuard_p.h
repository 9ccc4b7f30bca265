#pragma once

#include <QPair>
#include <QString>

/// The files that this process has read and written, by device and inode, so that links do not hide
/// one.
namespace inputGuard {

using FileIdentity = QPair<quint64, quint64>; ///< device, inode

/// Notes an open file as read. Cheap when inputs are neither protected nor noted for results.
void noteRead(int fileDescriptor, const QString &fileName);
/// Keeps the hash of a file that is read for the first time, when hashes are asked for.
void keepHash(int fileDescriptor, const FileIdentity &identity, const QString &fileName);

} // namespace inputGuard
