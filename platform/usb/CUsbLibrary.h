#pragma once

#include "platform/IEventLoop.h"
#include "platform/IUsbLibrary.h"
#include "platform/usb/CUsbPort.h"

#include <chrono>
#include <memory>
#include <optional>

class CUsbPrinter;

/// The printer on a USB port of this computer.
///
/// Looks for it anew at each Dll_openUSB: the first device with an interface of the printer class
/// whose identification names Varden. Among several devices one that matches wins; when none
/// does, the result is that of the device that came furthest. A driver of the system's own that
/// holds the interface is put aside while it is open. Between Dll_closeUSB and Dll_openUSB nothing
/// is held, neither device nor memory.
///
/// Opening lets the event loop run until a device has told its identification, for a second at
/// most. What runs there may open or close, too: that ends the opening further out, as NotReady.
///
/// A device that goes away, or breaks a transfer, is closed; the next Dll_openUSB looks for it.
///
/// One that is made for a certain port knows no other device than the one that is plugged in there.
class CUsbLibrary : public IUsbLibrary {
public:
    /// How long a transfer may take.
    struct Limits {
        std::chrono::milliseconds m_iSend{5000};
        std::chrono::milliseconds m_iReceive{1000};
    };

    /// p_objEventLoop runs while a transfer waits. Not owned, outlives this.
    explicit CUsbLibrary(IEventLoop& p_objEventLoop);
    /// The same for a certain port, or any, and other limits.
    CUsbLibrary(IEventLoop& p_objEventLoop, std::optional<CUsbPort> p_objPort,
                const Limits& p_objLimits);
    ~CUsbLibrary() override;
    CUsbLibrary(const CUsbLibrary&) = delete;
    CUsbLibrary& operator=(const CUsbLibrary&) = delete;

    std::int32_t Dll_openUSB() override;
    [[nodiscard]] std::int32_t NotReadyNumber() const override { return m_iNumber; }
    std::int32_t Dll_sendUSB(std::span<const std::uint8_t> p_objBytes) override;
    std::int32_t Dll_rcvUSB(std::span<std::uint8_t> p_objBuffer) override;
    std::int32_t Dll_closeUSB() override;

private:
    [[nodiscard]] bool IsMeant(libusb_device* p_objDevice) const;
    void EndOpening();
    void GiveUp(const std::shared_ptr<CUsbPrinter>& p_objPrinter);

    IEventLoop& m_objEventLoop;
    std::optional<CUsbPort> m_objPort;
    Limits m_objLimits;
    std::int32_t m_iNumber = 0;
    // A call that waits keeps its printer alive when another call closes it meanwhile.
    std::shared_ptr<CUsbPrinter> m_objPrinter;
    std::weak_ptr<CUsbPrinter> m_objOpening;  // the one that is asked who it is
};
