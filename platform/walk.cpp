#include "platform/walk.h"
