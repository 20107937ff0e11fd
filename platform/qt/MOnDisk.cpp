#include "platform/qt/MOnDisk.h"

#include "platform/qt/CFileHandle.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace {

bool Sync(int p_iFile) {
    return ::fsync(p_iFile) == 0 || errno == EINVAL || errno == ENOTSUP;
}

}  // namespace

namespace MOnDisk {

bool Wait(int p_iFile) {
    if (!Sync(p_iFile)) {
        return false;
    }
    const int iCopy = ::dup(p_iFile);
    return iCopy >= 0 && ::close(iCopy) == 0;
}

bool WaitForFolder(int p_iFolder) {
    const CFileHandle objFolder(::openat(p_iFolder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return objFolder.IsOpen() && Sync(objFolder.Number());
}

}  // namespace MOnDisk
