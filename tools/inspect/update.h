#pragma once

#include "tools/inspect/arguments.h"
#include "tools/inspect/json_text.h"

// What the program decides when it asks for a newer version. Only where the program is built.
namespace inspect {

Json newer(const Request& request);          ///< "newer": whether the first version comes after the second
Json acceptablePage(const Request& request); ///< "acceptable-page": which addresses would be opened

} // namespace inspect
