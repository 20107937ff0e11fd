#pragma once

#include <QSerialPort>

#include <cstdint>
#include <optional>
#include <utility>

/// What the system tells of the line of a serial port that is open.
class ILineState {
public:
    /// One look; nothing where the system does not tell.
    struct Reading {
        std::optional<bool> m_bClearToSend;       ///< the clear-to-send line is on
        std::optional<std::int64_t> m_iOverruns;  ///< how often the hardware has lost characters
    };

    /// The system's own name for an open port.
    using Handle = decltype(std::declval<const QSerialPort&>().handle());

    virtual ~ILineState() = default;

    [[nodiscard]] virtual Reading Read(Handle p_iPort) const = 0;
};
