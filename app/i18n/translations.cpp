#include "app/i18n/translations.h"
