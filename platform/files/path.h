#pragma once

#include <string>
#include <string_view>

/// Functions on the text of paths; none accesses the disk. Paths are bytes, and "/" separates names.
namespace platform {

/// Returns the last name, ignoring trailing slashes: "c" for "/a/b/c" and "/a/b/c/", "/" for "/".
std::string_view lastComponent(std::string_view path);

/// Returns the path of the folder that contains the entry at a standardized path: "/a" for "/a/b", "/" for
/// "/a".
std::string_view parent(std::string_view path);

/// Returns the part of the last name after its last dot: "txt" for "a.txt" and "..name.txt". Empty when the
/// name ends in a dot ("Foo."), and when only one or two dots come before that part (".app", "..app").
std::string_view extension(std::string_view path);

/// Returns the last name without its extension and the dot before it: "com.example" for "com.example.editor".
std::string_view stem(std::string_view path);

/// Returns `folder` + "/" + `name`, with exactly one "/" between them.
std::string joined(std::string_view folder, std::string_view name);

/// Returns the standardized form of an absolute path: without "//", ".", ".." and trailing "/"; ".." above
/// the root is the root. Symbolic links are not resolved. Returns an empty or relative path unchanged.
std::string standardized(std::string_view path);

/// Returns true when `path` is a descendant of `folder`. Both must be standardized.
bool isBelow(std::string_view path, std::string_view folder);

} // namespace platform
