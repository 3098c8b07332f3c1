#pragma once

#include <string>

namespace platform {

/// Files for SQLite to read that are open already. It would open a database by its path and resolve links in
/// it by itself, which could lead out of a disk; and even a reader of its own leaves files beside a database
/// that has a log. Here a database's name is the numbers of its two descriptors; nothing can be written.
namespace sqlite_files {

/// What SQLite knows this by (its "VFS"); null when SQLite refuses it.
const char* fileSystem();

/// The name for a database and its log, -1 where it has none.
std::string name(int database, int log);

} // namespace sqlite_files

} // namespace platform
