#pragma once

namespace sample_disk {

/// Sets or clears the user's immutable flag of an open file or folder, which may fail: not every file system
/// has the flag, and on Linux only root can change it.
void setImmutable(int descriptor, bool isImmutable);

} // namespace sample_disk
