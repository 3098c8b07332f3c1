#pragma once

#include "platform/files/disk.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// A property list, XML or binary, as far as the program reads one: the values at the top of a dictionary.
/// Whatever a file holds (cut short, cyclic, nested without end, huge), reading it ends in a value or an
/// error.
class PropertyList {
public:
    enum class Root { dictionary, array, string, integer, real, boolean, date, data, other };

    /// Cocoa error 3840 for what is no property list, or none within the bounds set here: 16 MiB, 512 levels.
    static Result<PropertyList> parse(std::string_view bytes);

    /// The one in the regular file at `path`; a Cocoa error when it cannot be read.
    static Result<PropertyList> read(const Disk& disk, std::string_view path);

    Root root() const;

    /// The value of `key` in the top dictionary, where it is there and of this type; UTF-8.
    std::optional<std::string> string(const std::string& key) const;
    std::optional<bool> boolean(const std::string& key) const;

private:
    struct Node;
    explicit PropertyList(std::shared_ptr<Node> node) : m_node(std::move(node)) {}
    std::shared_ptr<Node> m_node;
};

} // namespace platform
