#include "platform/usb/MUsbNumber.h"

#include <libusb.h>

#include <cerrno>

std::int32_t MUsbNumber::Of(int p_iLibrary) {
    switch (p_iLibrary) {
    case LIBUSB_SUCCESS:
        return 0;
    case LIBUSB_ERROR_ACCESS:
        return EACCES;
    case LIBUSB_ERROR_BUSY:
        return EBUSY;
    case LIBUSB_ERROR_NO_DEVICE:
    case LIBUSB_ERROR_NOT_FOUND:
        return ENODEV;
    default:
        return EIO;
    }
}
