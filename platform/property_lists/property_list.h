#pragma once

#include "platform/files/disk.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// An XML or binary property list. Gives access to the values of its top dictionary. Untrusted input
/// (truncated, cyclic, deeply nested, huge) yields an error.
class PropertyList {
public:
    enum class Root { dictionary, array, string, integer, real, boolean, date, data, other };

    /// Parses a property list of at most 16 MiB and 512 levels. Fails with `cocoa::propertyListCorrupt`.
    static Result<PropertyList> parse(std::string_view bytes);

    /// Parses the property list in the regular file at `path`. Fails with a Cocoa error.
    static Result<PropertyList> read(const Disk& disk, std::string_view path);

    /// Returns the type of the top value.
    Root root() const;

    /// Returns the value of `key` in the top dictionary (strings in UTF-8), or nullopt when it is missing or
    /// has a different type.
    std::optional<std::string> string(const std::string& key) const;
    std::optional<bool> boolean(const std::string& key) const;

    /// Returns the first item of the array `key`, or nullopt when there is none or it is not a string.
    std::optional<std::string> firstString(const std::string& key) const;

private:
    struct Node;
    explicit PropertyList(std::shared_ptr<Node> node) : m_node(std::move(node)) {}
    std::shared_ptr<Node> m_node;
};

} // namespace platform
