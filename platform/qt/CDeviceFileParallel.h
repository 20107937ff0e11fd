#pragma once

#include "platform/IParallelLibrary.h"

#include <map>

/// The parallel port as a device file of the system; "LPT1:" is the first printer port.
class CDeviceFileParallel : public IParallelLibrary {
public:
    /// @param p_strFirstPort the file behind "LPT1:", which is never made when it is not there.
    explicit CDeviceFileParallel(std::string p_strFirstPort = "/dev/lp0");
    ~CDeviceFileParallel() override;
    CDeviceFileParallel(const CDeviceFileParallel&) = delete;
    CDeviceFileParallel& operator=(const CDeviceFileParallel&) = delete;

    std::int32_t DeviceOpen(const std::string& p_strName) override;
    void DeviceTimeoutSet(std::int32_t p_iHandle, std::int32_t p_iMilliseconds) override;
    std::int32_t DeviceWrite(std::int32_t p_iHandle,
                             std::span<const std::uint8_t> p_objBytes) override;
    void DeviceClose(std::int32_t p_iHandle) override;

private:
    std::string m_strFirstPort;
    std::map<std::int32_t, std::int32_t> m_iTimeouts;  // of each open handle, milliseconds
};
