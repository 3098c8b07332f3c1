#pragma once

#include <functional>
#include <string>

#include <QString>

/// The desktop's file manager. Interface thread only.
namespace FileManager {

/// Returns the translation key of the menu entry that calls show().
QString showKey();

/// Shows the entry at this path of the host in its folder, selected if the file manager can do that. Doesn't
/// block. Calls `finished`, possibly before it returns, with false if nothing was shown.
void show(const std::string& hostPath, const std::function<void(bool)>& finished);

} // namespace FileManager
