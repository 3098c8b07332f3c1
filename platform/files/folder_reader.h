#pragma once

#include "platform/files/attributes.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace platform {

/// An entry as a folder tells it.
struct FolderEntry {
    std::string_view name; ///< ends in a NUL; valid until the next call
    bool typeIsKnown = false;
    EntryType type = EntryType::other; ///< where the file system says so
    bool isHidden = false;             ///< by its name, or by a mark of systems that have one
};

/// Reads folders entry by entry, in the order of the file system, with the fewest system calls that there
/// are. One buffer serves any number of folders, one after the other.
class FolderReader {
public:
    FolderReader();
    ~FolderReader();

    /// Starts reading the folder open at this descriptor, from its beginning the first time it is read.
    void start(int folder);

    /// The next entry, "." and ".." left out; null at the end, and when reading fails.
    const FolderEntry* next();

    /// The host's errno when next() ended because reading failed; otherwise 0.
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
