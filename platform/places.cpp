#include "platform/places.h"
