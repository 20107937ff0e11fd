#include "platform/usb/CUsbTransfer.h"

#include <libusb.h>

#include <new>

namespace {

// What a transfer is told for its own limit: none. Its owner keeps the time.
constexpr unsigned NoLimit = 0;

}  // namespace

CUsbTransfer::End CUsbTransfer::EndOf(int p_iStatus) {
    switch (p_iStatus) {
    case LIBUSB_TRANSFER_COMPLETED:
        return End::Done;
    case LIBUSB_TRANSFER_CANCELLED:
    case LIBUSB_TRANSFER_TIMED_OUT:
        return End::Stopped;
    case LIBUSB_TRANSFER_STALL:
    case LIBUSB_TRANSFER_OVERFLOW:
        return End::Stalled;
    default:
        return End::Lost;
    }
}

CUsbTransfer::CUsbTransfer(libusb_context* p_objContext, libusb_device_handle* p_objHandle,
                           std::uint8_t p_iEndpoint, std::span<std::uint8_t> p_objBytes)
    : m_objContext(p_objContext)
    , m_objTransfer(libusb_alloc_transfer(0)) {
    if (m_objTransfer == nullptr) {
        throw std::bad_alloc();
    }
    if (p_iEndpoint == ControlEndpoint) {
        libusb_fill_control_transfer(m_objTransfer, p_objHandle, p_objBytes.data(),
                                     &CUsbTransfer::OnOver, this, NoLimit);
    } else {
        libusb_fill_bulk_transfer(m_objTransfer, p_objHandle, p_iEndpoint, p_objBytes.data(),
                                  static_cast<int>(p_objBytes.size()), &CUsbTransfer::OnOver, this,
                                  NoLimit);
    }
    if (libusb_submit_transfer(m_objTransfer) != LIBUSB_SUCCESS) {
        libusb_free_transfer(m_objTransfer);
        m_objTransfer = nullptr;
    }
}

CUsbTransfer::~CUsbTransfer() {
    Cancel();
}

void CUsbTransfer::OnOver(libusb_transfer* p_objTransfer) {
    static_cast<CUsbTransfer*>(p_objTransfer->user_data)->m_bOver = 1;
}

void CUsbTransfer::Pump(std::chrono::milliseconds p_iLimit) {
    if (IsOver()) {
        return;
    }
    timeval objLimit{};
    objLimit.tv_usec = static_cast<decltype(objLimit.tv_usec)>(
        std::chrono::duration_cast<std::chrono::microseconds>(p_iLimit).count());
    libusb_handle_events_timeout_completed(m_objContext, &objLimit, &m_bOver);
    if (m_bOver != 0) {
        Finish();
    }
}

void CUsbTransfer::Cancel() {
    constexpr std::chrono::milliseconds iSlice{100};
    if (!IsOver()) {
        libusb_cancel_transfer(m_objTransfer);
    }
    while (!IsOver()) {
        Pump(iSlice);
    }
}

void CUsbTransfer::Finish() {
    m_iEnd = EndOf(m_objTransfer->status);
    m_iCount = static_cast<std::size_t>(m_objTransfer->actual_length);
    // Freed here and not at the end: it holds the device, which may be closed before that.
    libusb_free_transfer(m_objTransfer);
    m_objTransfer = nullptr;
}
