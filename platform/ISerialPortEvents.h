#pragma once

#include <cstdint>

/// The event codes of a serial port that somebody acts on; there are others.
enum SerialEvent : std::int16_t {
    SerialSend = 1,               ///< room to send
    SerialReceive = 2,            ///< characters to fetch
    SerialClearToSend = 3,        ///< the clear-to-send line has changed
    SerialReceiveOverrun = 1006,  ///< the hardware has lost characters
};

/// Who hears of a serial port's events. They come from the event loop only, never from inside a
/// call of ISerialPort, and may call it.
class ISerialPortEvents {
public:
    virtual ~ISerialPortEvents() = default;

    /// p_iEvent: a SerialEvent or any other code.
    virtual void OnComm(std::int16_t p_iEvent) = 0;

    /// The port is not there any more, and closed.
    virtual void OnGone() {}
};
