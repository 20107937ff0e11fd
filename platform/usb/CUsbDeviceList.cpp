#include "platform/usb/CUsbDeviceList.h"

#include <libusb.h>

CUsbDeviceList::CUsbDeviceList(libusb_context* p_objContext) {
    const ssize_t iCount = libusb_get_device_list(p_objContext, &m_objDevices);
    m_iCount = iCount > 0 ? static_cast<std::size_t>(iCount) : 0;
}

CUsbDeviceList::~CUsbDeviceList() {
    libusb_free_device_list(m_objDevices, 1);
}
