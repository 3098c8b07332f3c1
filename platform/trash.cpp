#include "platform/trash.h"
