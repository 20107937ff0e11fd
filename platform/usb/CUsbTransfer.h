#pragma once

#include <chrono>
#include <cstdint>
#include <span>

struct libusb_context;
struct libusb_device_handle;
struct libusb_transfer;

/// One transfer on its way. Whoever owns it drives it; it is over, whatever happens, before
/// it goes.
class CUsbTransfer {
public:
    /// How a transfer has ended.
    enum class End : std::uint8_t {
        Done,     ///< all bytes, or as many as the other side had
        Stopped,  ///< cancelled; what had passed by then counts
        Stalled,  ///< the endpoint has refused it
        Lost,     ///< the device is gone
    };

    /// The device itself, which takes control transfers; the other endpoints take bulk ones.
    static constexpr std::uint8_t ControlEndpoint = 0;

    /// What it means that libusb has ended a transfer so (LIBUSB_TRANSFER_…).
    static End EndOf(int p_iStatus);

    /// Begins at once. The bytes are the caller's and outlive this; those of a control transfer
    /// begin with its setup, which tells how many follow and is not counted.
    CUsbTransfer(libusb_context* p_objContext, libusb_device_handle* p_objHandle,
                 std::uint8_t p_iEndpoint, std::span<std::uint8_t> p_objBytes);
    ~CUsbTransfer();
    CUsbTransfer(const CUsbTransfer&) = delete;
    CUsbTransfer& operator=(const CUsbTransfer&) = delete;

    /// Lets it go on, for p_iLimit at most.
    void Pump(std::chrono::milliseconds p_iLimit);

    /// Ends it; it is over when this returns.
    void Cancel();

    [[nodiscard]] bool IsOver() const { return m_objTransfer == nullptr; }

    // Once it is over:
    [[nodiscard]] End How() const { return m_iEnd; }
    [[nodiscard]] std::size_t Count() const { return m_iCount; }

private:
    static void OnOver(libusb_transfer* p_objTransfer);
    void Finish();

    libusb_context* m_objContext;
    libusb_transfer* m_objTransfer;
    int m_bOver = 0;  // set by the library
    std::size_t m_iCount = 0;
    End m_iEnd = End::Lost;
};
