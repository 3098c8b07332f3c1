#pragma once

#include "platform/base/error.h"

#include <string_view>

namespace core::LumvaleScanner {

/// The translation key, "err_trash_…", of why an entry of the Trash could not be removed.
std::string_view reasonKey(const platform::Error& error);

} // namespace core::LumvaleScanner
