#include "app/models/background.h"
