#pragma once

#include "platform/ISerialPortEvents.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Whom the system lets use a device that could not be had. Empty where it does not tell.
struct DeviceRefusal {
    std::string m_strFile;   ///< the device's file, "/dev/ttyUSB0"
    std::string m_strGroup;  ///< whose members may use it
    bool m_bMember = false;  ///< this user belongs to that group, but has not logged in since
};

/// One serial port. Set up before it is opened; nothing blocks.
class ISerialPort {
public:
    /// What Open gives when the port is open, and when another program has it.
    static constexpr std::int32_t Opened = 0;
    static constexpr std::int32_t AlreadyOpen = 8005;

    virtual ~ISerialPort() = default;

    /// Who gets the events; null for nobody. Not owned, must outlive the port or be withdrawn.
    virtual void SetEvents(ISerialPortEvents* p_objEvents) = 0;

    /// Speed, parity, data bits and stop bits: "9600,E,8,1".
    virtual void SetSettings(const std::string& p_strSettings) = 0;
    /// 0: none.
    virtual void SetHandshaking(std::int16_t p_iHandshaking) = 0;
    /// How many characters raise a receive event; 0: never.
    virtual void SetReceiveThreshold(std::int16_t p_iCharacters) = 0;
    /// How many characters Input takes at a time; 0: all.
    virtual void SetInputLength(std::int16_t p_iCharacters) = 0;
    /// How few characters waiting to be sent raise a send event; 0: never.
    virtual void SetSendThreshold(std::int16_t p_iCharacters) = 0;
    /// Counted from 1.
    virtual void SetPortNumber(std::int16_t p_iPort) = 0;

    /// Opened, AlreadyOpen, or for any other failure any other number: the system's (errno) where
    /// it tells one.
    virtual std::int32_t Open() = 0;
    /// What the latest Open ran into, when it failed.
    [[nodiscard]] virtual DeviceRefusal Refusal() const { return {}; }
    /// Harmless when not open.
    virtual void Close() = 0;
    [[nodiscard]] virtual bool IsOpen() const = 0;

    /// Hands bytes over for sending. False, and nothing sent, when not open.
    virtual bool Output(std::span<const std::uint8_t> p_objBytes) = 0;
    /// Takes as many characters as the input length says, or fewer when fewer are there.
    virtual std::vector<std::uint8_t> Input() = 0;
    /// The state of the clear-to-send line; true where the system does not tell.
    [[nodiscard]] virtual bool ClearToSend() const = 0;
};
