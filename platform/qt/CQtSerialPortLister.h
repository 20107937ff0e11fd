#pragma once

#include "platform/ISerialPortLister.h"
#include "platform/qt/MSerialPortName.h"

/// The serial ports that the system knows, and those to which an administrator has given a name of
/// the form comN.
class CQtSerialPortLister : public ISerialPortLister {
public:
    /// The window's list has COM1 to COM9.
    static constexpr std::int16_t LastComNumber = 9;

    /// @param p_strDeviceFolder where MSerialPortName looks for ports.
    explicit CQtSerialPortLister(std::string p_strDeviceFolder = MSerialPortName::DeviceFolder);

    std::vector<CSerialPortEntry> SerialPorts() override;

    /// Gives each of p_objEntries its COM numbers, and adds the names comN that lead to a device
    /// beyond them.
    void AddComNumbers(std::vector<CSerialPortEntry>& p_objEntries) const;

private:
    std::string m_strDeviceFolder;
};
