#pragma once

#include <cstddef>
#include <span>

struct libusb_context;
struct libusb_device;

/// The devices that are on USB now, in the system's order. They are there for as long as this is.
class CUsbDeviceList {
public:
    /// p_objContext is not owned and outlives this.
    explicit CUsbDeviceList(libusb_context* p_objContext);
    ~CUsbDeviceList();
    CUsbDeviceList(const CUsbDeviceList&) = delete;
    CUsbDeviceList& operator=(const CUsbDeviceList&) = delete;

    [[nodiscard]] std::span<libusb_device*> Devices() const { return {m_objDevices, m_iCount}; }

private:
    libusb_device** m_objDevices = nullptr;
    std::size_t m_iCount = 0;
};
