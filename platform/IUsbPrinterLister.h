#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A device on USB that has an interface of the printer class. Texts are UTF-8, empty where the
/// system knows nothing.
struct CUsbPrinterEntry {
    int m_iBus = 0;
    std::vector<int> m_iPorts;  ///< the way from the bus to it, a port each; empty where not known
    std::string m_strDevice;    ///< its device file: "/dev/bus/usb/001/002"
    std::uint16_t m_iVendor = 0;
    std::uint16_t m_iProduct = 0;
    std::string m_strManufacturer;
    std::string m_strProduct;
    std::string m_strSerialNumber;
};

/// Tells which printers are plugged in on USB. Neither opens one nor sends it anything.
class IUsbPrinterLister {
public:
    virtual ~IUsbPrinterLister() = default;

    /// Those that are there now, by bus and port.
    virtual std::vector<CUsbPrinterEntry> UsbPrinters() = 0;
};
