#pragma once

#include "platform/files/attributes.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace platform {

/// A directory entry.
struct FolderEntry {
    std::string_view name; ///< followed by a NUL; valid until the next call
    bool typeIsKnown = false;
    EntryType type = EntryType::other; ///< valid only if `typeIsKnown`: some file systems don't report it
    bool isHidden = false;             ///< by its name, or by the system's hidden flag
};

/// Reads folders entry by entry, in the file system's order, with as few system calls as possible. One reader
/// reuses its buffer for any number of folders, one after the other.
class FolderReader {
public:
    FolderReader();
    ~FolderReader();

    /// Starts reading the folder that is open as this descriptor, from the descriptor's current position. The
    /// descriptor must stay open while next() is called.
    void start(int folder);

    /// Returns the next entry other than "." and "..", or null at the end and when reading fails.
    const FolderEntry* next();

    /// Returns the host's errno if next() returned null because reading failed, otherwise 0.
    int failure() const { return m_failure; }

private:
    static constexpr std::size_t bufferSize = std::size_t{64} * 1024;

    std::unique_ptr<char[]> m_buffer;
    std::size_t m_position = 0;
    std::size_t m_end = 0;
    int m_folder = -1;
    int m_failure = 0;
    FolderEntry m_entry;
};

} // namespace platform
