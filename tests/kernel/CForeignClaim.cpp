#include "tests/kernel/CForeignClaim.h"

#include <fcntl.h>
#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <stdexcept>

CForeignClaim::CForeignClaim(const std::string& p_strNode)
    : m_iFile(::open(p_strNode.c_str(), O_RDWR | O_CLOEXEC)) {
    usbdevfs_ioctl objDisconnect{0, USBDEVFS_DISCONNECT, nullptr};
    unsigned iInterface = 0;
    if (m_iFile < 0 || ::ioctl(m_iFile, USBDEVFS_IOCTL, &objDisconnect) < 0 ||
        ::ioctl(m_iFile, USBDEVFS_CLAIMINTERFACE, &iInterface) < 0) {
        ::close(m_iFile);
        throw std::runtime_error("the interface cannot be claimed: " + p_strNode);
    }
}

CForeignClaim::~CForeignClaim() {
    usbdevfs_ioctl objConnect{0, USBDEVFS_CONNECT, nullptr};
    unsigned iInterface = 0;
    ::ioctl(m_iFile, USBDEVFS_RELEASEINTERFACE, &iInterface);
    ::ioctl(m_iFile, USBDEVFS_IOCTL, &objConnect);
    ::close(m_iFile);
}

bool CForeignClaim::IsHeld() const {
    usbdevfs_setinterface objSetting{0, 0};
    return ::ioctl(m_iFile, USBDEVFS_SETINTERFACE, &objSetting) == 0;
}
