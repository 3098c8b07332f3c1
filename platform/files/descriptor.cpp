#include "platform/files/descriptor.h"

#include <unistd.h>

namespace platform {

Descriptor::~Descriptor() {
    if (m_number >= 0)
        close(m_number);
}

} // namespace platform
