#pragma once

#include "platform/IDeviceAccess.h"

#include <vector>

/// What the system tells of device files: their permissions, and who has them open or has left a
/// lock file. On Windows, where a port says only when it is opened, everything that is asked for is
/// possible.
class CDeviceAccess : public IDeviceAccess {
public:
    /// Where programs put their locks on serial ports.
    static std::vector<std::string> LockFolders();

    explicit CDeviceAccess(std::vector<std::string> p_strLockFolders = LockFolders());

    [[nodiscard]] CDeviceState Look(const std::string& p_strDevice) const override;

private:
    [[nodiscard]] std::string HolderByLock(const std::string& p_strDevice) const;

    std::vector<std::string> m_strLockFolders;
};
