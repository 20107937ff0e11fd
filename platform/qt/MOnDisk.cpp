#include "platform/qt/MOnDisk.h"

#include <unistd.h>

#include <cerrno>

bool MOnDisk::Wait(int p_iFile) {
    if (::fsync(p_iFile) != 0 && errno != EINVAL && errno != ENOTSUP) {
        return false;
    }
    const int iCopy = ::dup(p_iFile);
    return iCopy >= 0 && ::close(iCopy) == 0;
}
