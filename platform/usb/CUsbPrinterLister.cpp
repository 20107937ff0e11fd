#include "platform/usb/CUsbPrinterLister.h"

#include "platform/usb/CUsbDeviceList.h"
#include "platform/usb/CUsbPort.h"
#include "platform/usb/CUsbPrinter.h"

#include <libusb.h>

#include <algorithm>
#include <fstream>
#include <tuple>
#include <utility>

namespace {

/// A number in three digits.
std::string Three(int p_iNumber) {
    constexpr std::size_t iDigits = 3;
    const std::string strNumber = std::to_string(p_iNumber);
    return std::string(iDigits - std::min(strNumber.size(), iDigits), '0') + strNumber;
}

CUsbPrinterEntry EntryOf(libusb_device* p_objDevice) {
    CUsbPrinterEntry objEntry;
    const CUsbPort objPort = CUsbPort::Of(p_objDevice);
    objEntry.m_iBus = objPort.m_iBus;
    objEntry.m_iPorts = objPort.m_iPorts;
    objEntry.m_strDevice = "/dev/bus/usb/" + Three(objEntry.m_iBus) + "/" +
                           Three(libusb_get_device_address(p_objDevice));
    libusb_device_descriptor objDescriptor{};
    if (libusb_get_device_descriptor(p_objDevice, &objDescriptor) == LIBUSB_SUCCESS) {
        objEntry.m_iVendor = objDescriptor.idVendor;
        objEntry.m_iProduct = objDescriptor.idProduct;
    }
    return objEntry;
}

/// The system's name of a device: "1-2.3".
std::string SystemName(const CUsbPrinterEntry& p_objEntry) {
    std::string strName = std::to_string(p_objEntry.m_iBus);
    for (std::size_t i = 0; i < p_objEntry.m_iPorts.size(); ++i) {
        strName += (i == 0 ? "-" : ".") + std::to_string(p_objEntry.m_iPorts[i]);
    }
    return strName;
}

}  // namespace

CUsbPrinterLister::CUsbPrinterLister(std::string p_strSystemFolder)
    : m_strSystemFolder(std::move(p_strSystemFolder)) {}

std::vector<CUsbPrinterEntry> CUsbPrinterLister::UsbPrinters() {
    std::vector<CUsbPrinterEntry> objEntries;
    libusb_context* objContext = nullptr;
    if (libusb_init(&objContext) != LIBUSB_SUCCESS) {
        return objEntries;
    }
    const CUsbPrinter::Context objOwner(objContext, &libusb_exit);
    const CUsbDeviceList objList(objContext);
    for (libusb_device* const objDevice : objList.Devices()) {
        if (CUsbPrinter::IsPrinterClass(objDevice)) {
            CUsbPrinterEntry& objEntry = objEntries.emplace_back(EntryOf(objDevice));
            objEntry.m_strManufacturer = Attribute(objEntry, "manufacturer");
            objEntry.m_strProduct = Attribute(objEntry, "product");
            objEntry.m_strSerialNumber = Attribute(objEntry, "serial");
        }
    }
    std::ranges::sort(objEntries, {}, [](const CUsbPrinterEntry& p_objEntry) {
        return std::tie(p_objEntry.m_iBus, p_objEntry.m_iPorts, p_objEntry.m_strDevice);
    });
    return objEntries;
}

std::string CUsbPrinterLister::Attribute(const CUsbPrinterEntry& p_objEntry,
                                         const char* p_strName) const {
    std::ifstream objFile(m_strSystemFolder + "/" + SystemName(p_objEntry) + "/" + p_strName);
    std::string strText;
    std::getline(objFile, strText);
    return strText;
}
