#pragma once

#include "platform/IEventLoop.h"
#include "platform/usb/CUsbTransfer.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

struct libusb_device;

/// One device of the printer class, held: its interface is claimed, the system's own driver for it
/// put aside until it is closed.
///
/// A transfer lets the event loop run while it waits, and after it when it has brought nothing or
/// nothing else has let it run for a while. What runs there may use the printer too: a transfer
/// that begins, or the closing, ends the one that waits further out. Only bytes of which some have
/// left already are sent to their end before that, so that nothing lands in the middle of them.
/// Whatever the printer does, a use of it ends when its time is over, and at once when the program
/// closes.
class CUsbPrinter {
public:
    /// Where a device takes and gives the printer's data.
    struct Endpoints {
        int m_iInterface = 0;
        int m_iAlternate = 0;
        bool m_bAlternates = false;  ///< there are others to choose from
        std::uint8_t m_iOut = 0;
        std::uint8_t m_iIn = 0;
        std::size_t m_iInPacket = 0;  ///< the most bytes that come in one packet
    };

    /// What a transfer came to: the bytes passed, and whether the printer is to be given up.
    struct Result {
        std::size_t m_iCount = 0;
        bool m_bComplete = false;
        bool m_bLost = false;
        bool m_bOvertaken = false;  ///< another use of the printer, or its closing, has ended it
    };

    using Context = std::shared_ptr<libusb_context>;

    /// True when the device has an interface of the printer class, whether usable or not.
    static bool IsPrinterClass(libusb_device* p_objDevice);

    /// Takes hold of a device; null when that cannot be, and p_iNumber tells why (MUsbNumber).
    /// p_objEventLoop is not owned.
    static std::shared_ptr<CUsbPrinter> Open(const Context& p_objContext,
                                             libusb_device* p_objDevice, IEventLoop& p_objEventLoop,
                                             std::int32_t& p_iNumber);

    CUsbPrinter(Context p_objContext, libusb_device_handle* p_objHandle,
                const Endpoints& p_objEndpoints, IEventLoop& p_objEventLoop);
    ~CUsbPrinter();
    CUsbPrinter(const CUsbPrinter&) = delete;
    CUsbPrinter& operator=(const CUsbPrinter&) = delete;

    /// False once it has been closed.
    [[nodiscard]] bool IsOpen() const { return m_objHandle != nullptr; }

    /// The text of its identification; nothing when it cannot be read. Waits a second at most.
    std::optional<std::string> ReadDeviceId();

    /// Throws away what an earlier command's answer has left, then sends, in as many transfers as
    /// the printer needs, until p_iLimit has passed.
    Result Send(std::span<const std::uint8_t> p_objBytes, std::chrono::milliseconds p_iLimit);

    /// Takes an answer, which may come in several packets soon after each other, or what of an
    /// earlier one had no place in its buffer. Complete when there is anything.
    Result Receive(std::span<std::uint8_t> p_objBuffer, std::chrono::milliseconds p_iLimit);

    /// Lets go of the device and gives it back to the system's driver.
    void Close();

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// What a transfer was driven to.
    enum class Drove : std::uint8_t { ToItsEnd, UntilStopped, Overtaken };

    /// What a Send has to send, for as long as it lasts.
    struct Outgoing {
        std::vector<std::uint8_t> m_objBytes;
        TimePoint m_iDeadline;
        std::size_t m_iCount = 0;  ///< have left
        bool m_bLost = false;
        int m_iDrivers = 0;  ///< who has sent some of it; only the last one counts what leaves
    };

    bool DropOldAnswer();
    void DriveOutgoing(Outgoing& p_objOutgoing);
    void FinishOutgoing();
    std::size_t TakeRest(std::span<std::uint8_t> p_objBuffer);
    void TakePacket(std::span<const std::uint8_t> p_objBytes, std::span<std::uint8_t> p_objBuffer,
                    Result& p_objResult);
    Result Transfer(std::uint8_t p_iEndpoint, std::span<std::uint8_t> p_objBytes,
                    TimePoint p_iDeadline);
    Drove Drive(CUsbTransfer& p_objTransfer, TimePoint p_iDeadline);
    void Yield();
    [[nodiscard]] bool MustStop(TimePoint p_iDeadline) const;
    void EndActive();

    Context m_objContext;
    libusb_device_handle* m_objHandle;  // null when closed
    Endpoints m_objEndpoints;
    IEventLoop& m_objEventLoop;
    CUsbTransfer* m_objActive = nullptr;  // the one that waits; not owned
    Outgoing* m_objOutgoing = nullptr;    // the Send's that waits; not owned
    TimePoint m_iYielded;                 // when the event loop has run last, at the latest
    std::vector<std::uint8_t> m_objRest;  // received, and not yet taken
};
