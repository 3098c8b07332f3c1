#pragma once

#include "platform/base/error.h"

#include <string_view>

namespace core::LumvaleScanner {

/// Returns the translation key, "err_trash_…", of the reason why an entry of the Trash could not be removed.
std::string_view reasonKey(const platform::Error& error);

/// Returns the translation key of the reason why deletePaths() left an entry where it was.
std::string_view deletionReasonKey(const platform::Error& error);

/// Returns the translation key of the reason why putBack() did not put an entry back.
std::string_view putBackReasonKey(const platform::Error& error);

} // namespace core::LumvaleScanner
