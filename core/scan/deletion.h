#pragma once

#include "platform/error.h"

#include <string>
#include <vector>

/// A path that was not deleted, and why.
struct DeletionFailure {
    std::string path; ///< as given when the guard refused it, else standardised
    platform::Error error;
};

/// What came of deleting some paths; both lists in the order of the input.
struct DeletionOutcome {
    std::vector<std::string> succeeded; ///< standardised
    std::vector<DeletionFailure> failed;
};
