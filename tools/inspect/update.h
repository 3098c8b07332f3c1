#pragma once

#include "tools/inspect/arguments.h"
#include "tools/inspect/json_text.h"

/// Decisions of the update check. Only if the program is built.
namespace inspect {

Json newer(const Request& request);          ///< "newer": true if the first version is newer than the second
Json acceptablePage(const Request& request); ///< "acceptable-page": the addresses that may be opened

} // namespace inspect
