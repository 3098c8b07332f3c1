#pragma once

#include "platform/files/attributes.h"

#include <memory>
#include <optional>
#include <string_view>

namespace platform {

/// A directory entry.
struct FolderEntry {
    std::string_view name; ///< followed by a NUL; valid until the next call
    bool typeIsKnown = false;
    EntryType type = EntryType::other; ///< valid only if `typeIsKnown`: some file systems don't report it
    bool isHidden = false;             ///< by its name, or by the system's hidden flag

    /// Set if the system reports them together with the name, at no further cost.
    std::optional<Attributes> attributes = {};
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
    int failure() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace platform
