#pragma once

#include "tools/inspect/arguments.h"
#include "tools/inspect/json_text.h"

namespace inspect {

/// The operation "tr": texts of the program by language and keys. Only where the program is built.
Json translate(const Request& request);

} // namespace inspect
