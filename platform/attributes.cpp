#include "platform/attributes.h"
