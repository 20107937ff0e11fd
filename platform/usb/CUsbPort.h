#pragma once

#include <cstddef>
#include <vector>

struct libusb_device;

/// Where a device is plugged in: the bus, and the way from there, a port each.
struct CUsbPort {
    /// The longest way that USB knows.
    static constexpr std::size_t MostPorts = 7;

    /// That of p_objDevice; no ports where the system does not know them.
    static CUsbPort Of(libusb_device* p_objDevice);

    int m_iBus = 0;
    std::vector<int> m_iPorts{};

    bool operator==(const CUsbPort&) const = default;
};
