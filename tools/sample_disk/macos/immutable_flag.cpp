#include "tools/sample_disk/immutable_flag.h"

#include <sys/stat.h>
#include <unistd.h>

namespace sample_disk {

void setImmutable(int descriptor, bool isImmutable) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || ((status.st_flags & UF_IMMUTABLE) != 0) == isImmutable)
        return;
    fchflags(descriptor, status.st_flags ^ UF_IMMUTABLE);
}

} // namespace sample_disk
