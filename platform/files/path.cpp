#include "platform/files/path.h"

namespace platform {

namespace {

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

/// Returns the index of the dot before the extension, or npos when there is no extension.
std::size_t extensionDot(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot + 1 == name.size() || dot == 0)
        return std::string_view::npos;
    if (dot == 1 && name.front() == '.')
        return std::string_view::npos;
    return dot;
}

} // namespace

std::string_view lastComponent(std::string_view path) {
    path = withoutTrailingSlashes(path);
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos || path.size() == 1)
        return path;
    return path.substr(slash + 1);
}

std::string_view parent(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return path.substr(0, std::max<std::size_t>(slash, 1));
}

std::string_view extension(std::string_view path) {
    const std::string_view name = lastComponent(path);
    const std::size_t dot = extensionDot(name);
    return dot == std::string_view::npos ? std::string_view{} : name.substr(dot + 1);
}

std::string_view stem(std::string_view path) {
    const std::string_view name = lastComponent(path);
    return name.substr(0, extensionDot(name));
}

std::string joined(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (path.empty() || path.back() != '/')
        path += '/';
    return path.append(name);
}

std::string standardized(std::string_view path) {
    if (path.empty() || path.front() != '/')
        return std::string(path);
    std::string result;
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::string_view name = path.substr(0, path.find('/'));
        path.remove_prefix(name.size());
        if (name.empty() || name == ".")
            continue;
        if (name == "..")
            result.erase(result.empty() ? 0 : result.rfind('/'));
        else
            result.append("/").append(name);
    }
    return result.empty() ? "/" : result;
}

bool isBelow(std::string_view path, std::string_view folder) {
    if (folder == "/")
        return path.size() > 1 && path.front() == '/';
    return path.size() > folder.size() + 1 && path.starts_with(folder) && path[folder.size()] == '/';
}

} // namespace platform
