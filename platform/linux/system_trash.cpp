#include "platform/removal/system_trash.h"

// The Trash of Linux desktops is another folder than the ".Trash" of a Mac's home.

namespace platform {

TrashService systemTrash() {
    return {};
}

} // namespace platform
