#pragma once

#include "tests/kernel/CUsbIpDevice.h"
#include "tests/kernel/CVirtualPort.h"

#include <optional>

/// A simulated device on a port: plugged in when it is made, pulled out when it goes.
class CPluggedDevice {
public:
    /// Returns once the kernel has set it up; a printer is then in the hands of usblp.
    explicit CPluggedDevice(const CDeviceSettings& p_objSettings = {}, int p_iPort = 0);
    CPluggedDevice(const CPluggedDevice&) = delete;
    CPluggedDevice& operator=(const CPluggedDevice&) = delete;
    ~CPluggedDevice();

    /// Pulls it out, and returns once the kernel has noticed. False when it does not.
    [[nodiscard]] bool Unplug();

    [[nodiscard]] const CUsbIpDevice& Device() const { return *m_objDevice; }
    [[nodiscard]] const CVirtualPort& Port() const { return m_objPort; }

private:
    CVirtualPort m_objPort;
    std::optional<CUsbIpDevice> m_objDevice;
};
