#pragma once

#include <string>
#include <string_view>

/// Paths as text: nothing here touches a file. Paths are bytes, "/" separates names, and a trailing "/" is
/// ignored where a name is asked for.
namespace platform {

/// The last name: "c" of "/a/b/c" and of "/a/b/c/"; "/" of "/".
std::string_view lastComponent(std::string_view path);

/// Returns the part of the last name after its last dot: "txt" for "a.txt" and "..name.txt". Empty when the
/// name ends in a dot ("Foo."), and when only one or two dots come before that part (".app", "..app").
std::string_view extension(std::string_view path);

/// Returns the last name without its extension and the dot before it: "com.example" for "com.example.editor".
std::string_view stem(std::string_view path);

/// `folder` + "/" + `name`, with one "/" between them.
std::string joined(std::string_view folder, std::string_view name);

/// The standardised form: absolute, without "//", ".", ".." and trailing "/"; ".." above the root is the
/// root. Only text counts: links are not looked at. An empty or relative path comes back as given.
std::string standardized(std::string_view path);

/// Whether `path` lies somewhere below `folder` (both standardised).
bool isBelow(std::string_view path, std::string_view folder);

} // namespace platform
