#include "platform/file.h"
