#include "platform/remove.h"
