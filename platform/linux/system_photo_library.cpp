#include "platform/photos/system_photo_library.h"

namespace platform {

const SystemPhotoLibrary* systemPhotoLibrary() {
    return nullptr;
}

} // namespace platform
