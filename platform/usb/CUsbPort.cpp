#include "platform/usb/CUsbPort.h"

#include <libusb.h>

#include <algorithm>
#include <array>
#include <cstdint>

CUsbPort CUsbPort::Of(libusb_device* p_objDevice) {
    std::array<std::uint8_t, MostPorts> arrPorts{};
    const int iCount =
        libusb_get_port_numbers(p_objDevice, arrPorts.data(), static_cast<int>(arrPorts.size()));
    CUsbPort objPort;
    objPort.m_iBus = libusb_get_bus_number(p_objDevice);
    objPort.m_iPorts.assign(arrPorts.begin(), arrPorts.begin() + std::max(iCount, 0));
    return objPort;
}
