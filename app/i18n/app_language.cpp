#include "app/i18n/app_language.h"
