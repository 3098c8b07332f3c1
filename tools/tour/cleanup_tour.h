#pragma once

#include "tools/tour/stage.h"

/// Visits the states of the cleanup screen, with the storage breakdown and the Trash. Prints the deletions.
void tourCleanup(Stage& stage);
