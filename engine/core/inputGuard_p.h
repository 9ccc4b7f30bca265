#pragma once

#include <QString>

/// The files that this process has read and written, by device and inode, so that links do not hide
/// one.
namespace inputGuard {

/// Notes an open file as read. Cheap when inputs are not protected.
void noteRead(int fileDescriptor);

} // namespace inputGuard
