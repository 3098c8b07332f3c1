#include "app/i18n/localizer.h"
