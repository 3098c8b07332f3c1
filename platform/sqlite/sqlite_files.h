#pragma once

#include <string>

namespace platform {

/// A read-only SQLite VFS for files that are already open. SQLite's own VFS resolves symbolic links, which
/// can lead out of a disk, and creates files next to a database that has a write-ahead log.
namespace sqlite_files {

/// Registers the VFS at the first call. Returns its name, or null when SQLite rejects it.
const char* fileSystem();

/// Returns the name under which this VFS opens a database, from its descriptor and that of its log (-1 if it
/// has none).
std::string name(int database, int log);

} // namespace sqlite_files

} // namespace platform
