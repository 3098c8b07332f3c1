#include "app/history/history_store.h"
