#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// A serial port of this computer. Texts are UTF-8, empty where the system knows nothing.
struct CSerialPortEntry {
    std::string m_strDevice;                  ///< what it is opened by: "/dev/ttyUSB0"
    std::vector<std::int16_t> m_iComNumbers;  ///< the n of each COMn that it is
    std::string m_strDescription;             ///< "USB-Serial Controller"
    std::string m_strManufacturer;
    std::string m_strSerialNumber;
    std::optional<std::uint16_t> m_iVendor;  ///< of a USB adapter, as the next one
    std::optional<std::uint16_t> m_iProduct;
};

/// Tells which serial ports there are. Opens none: that would show on the line.
class ISerialPortLister {
public:
    virtual ~ISerialPortLister() = default;

    /// Those that are there now, in the order of their names.
    virtual std::vector<CSerialPortEntry> SerialPorts() = 0;
};
