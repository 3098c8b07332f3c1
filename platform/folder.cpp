#include "platform/folder.h"
