#pragma once

#include "platform/ISerialPort.h"
#include "platform/ITcpClientEvents.h"

#include <cstdint>
#include <string>

/// What has gone wrong between the tool and the printer: which failure, and what the system said
/// of it. How a person is told is not decided here.
struct CFailure {
    enum class Kind : std::uint8_t {
        None,
        // Serial port.
        SerialHeld,       ///< another program has the port
        SerialNotOpened,  ///< it could not be opened for another reason
        SerialNotOpen,    ///< a command was to go out while the port was not open
        SerialNotSent,    ///< the port was lost or closed while a command went out
        SerialLost,       ///< the port went away while an answer was awaited
        SerialOverrun,    ///< the hardware has lost characters
        // Network.
        LanError,         ///< the socket has reported an error, which m_objSocket tells
        LanNotConnected,  ///< connecting has failed; a LanError has told why
        LanNotSent,       ///< a command could not be sent, or not in time
        LanClosed,        ///< the connection went away while an answer was awaited
        // USB.
        UsbNotOpened,    ///< the printer could not be had in the middle of an exchange
        UsbNotReady,     ///< no printer there, or it cannot be had
        UsbNoDeviceId,   ///< its identification cannot be read
        UsbMismatch,     ///< its identification names another maker
        UsbNotSent,      ///< it did not take the command in time
        UsbNoAnswer,     ///< no answer, or none that was asked for
        UsbStrayAnswer,  ///< settings came to a command that asks for none
        // Any link.
        NoReply,  ///< no answer within the time
        NoLink,   ///< there is no such interface
        TimeUp,   ///< the time that was given for opening or sending is over
        // Parallel port.
        ParallelNotOpened,
        ParallelNotSent,
    };

    Kind m_iKind = Kind::None;
    SocketError m_objSocket{};  ///< of a failure of the network, as far as the socket told it
    /// What the port or the USB library gave, 0 where there is none; of a printer that was named
    /// beforehand the system's error number (errno), where it tells one.
    std::int32_t m_iNumber = 0;
    std::string m_strDevice{};  ///< "192.168.10.20:8000", "COM1"; may be empty
    /// Why a serial port did not open, or a printer on USB is not ready, as the system numbers it
    /// (errno); 0 where that is not told.
    std::int32_t m_iReason = 0;
    DeviceRefusal m_objRefusal{};  ///< of a serial port that did not open

    [[nodiscard]] bool IsNone() const { return m_iKind == Kind::None; }
};
