#include "simulator/usb/CUsbBehaviour.h"

std::string CUsbBehaviour::DeviceId(std::string_view p_strText) {
    constexpr std::size_t iLengthBytes = 2;
    constexpr std::size_t iByte = 256;
    const std::size_t iLength = p_strText.size() + iLengthBytes;
    return std::string{static_cast<char>(iLength / iByte), static_cast<char>(iLength % iByte)} +
           std::string(p_strText);
}
