#pragma once

#include "tools/tour/stage.h"

/// Visits the states of the other four tabs. Prints the deletions.
void tourTools(Stage& stage);
