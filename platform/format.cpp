#include "platform/format.h"
