#include "app/models/scan_items_model.h"
