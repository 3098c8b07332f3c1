#pragma once

#include "tools/inspect/arguments.h"
#include "tools/inspect/json_text.h"

namespace inspect {

/// The operation "tr": returns the program's texts for a language and keys. Only if the program is built.
Json translate(const Request& request);

} // namespace inspect
