#pragma once

#include <string>

/// A port of the kernel's virtual USB host controller, and what the kernel makes of the device on
/// it.
class CVirtualPort {
public:
    /// @param p_iPort counted from 0. Throws std::runtime_error without a controller.
    explicit CVirtualPort(int p_iPort);

    /// Plugs a high-speed device in that speaks at the other end of p_iSocket. The kernel holds
    /// the socket by itself from here on. Returns once the device has its configuration; throws
    /// std::runtime_error, with the reason, when it does not get that far.
    void Attach(int p_iSocket);

    /// Asks the kernel to pull the device out; harmless when there is none.
    void Detach() const;

    /// Waits until the kernel has forgotten the device that was pulled out. False when that takes
    /// too long.
    [[nodiscard]] bool WaitUntilEmpty() const;

    /// The driver that an interface of the device is bound to; empty for none.
    [[nodiscard]] std::string Driver(int p_iInterface) const;
    /// Waits until it is this one. False when that takes too long.
    [[nodiscard]] bool WaitForDriver(int p_iInterface, const std::string& p_strDriver) const;

    /// The file through which programs use the device.
    [[nodiscard]] std::string Node() const;

private:
    [[nodiscard]] std::string Attribute(const std::string& p_strName) const;
    [[nodiscard]] bool IsEmpty() const;

    int m_iPort;
    std::string m_strDevice;  // its name on the bus, such as "1-1"
};
