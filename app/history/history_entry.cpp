#include "app/history/history_entry.h"
