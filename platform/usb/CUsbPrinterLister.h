#pragma once

#include "platform/IUsbPrinterLister.h"

/// The printers on the USB ports of this computer, of any maker. Their texts come from what the
/// system has read when they were plugged in, which takes no permission; other systems than Linux
/// tell none.
class CUsbPrinterLister : public IUsbPrinterLister {
public:
    /// @param p_strSystemFolder where Linux tells of its USB devices.
    explicit CUsbPrinterLister(std::string p_strSystemFolder = "/sys/bus/usb/devices");

    std::vector<CUsbPrinterEntry> UsbPrinters() override;

private:
    [[nodiscard]] std::string Attribute(const CUsbPrinterEntry& p_objEntry,
                                        const char* p_strName) const;

    std::string m_strSystemFolder;
};
