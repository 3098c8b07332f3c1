#include "app/models/scan_view_model.h"
