#include "app/models/display.h"
