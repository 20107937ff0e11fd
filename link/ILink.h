#pragma once

#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// One way to the printer: serial port, TCP or USB.
///
/// Failures to open are reported by the link itself in a message box; a failed exchange hands its
/// text back. Nothing is retried. Every wait inside ends at once when the program closes.
class ILink {
public:
    virtual ~ILink() = default;

    /// Opens the link with the settings of CInterface. False when it could not be opened, or when
    /// a later handler or the program's closing has ended the wait for it.
    virtual bool Open() = 0;

    /// Closes the link; harmless when it is not open. True, always.
    virtual bool Close() = 0;

    /// Sends one command.
    ///
    /// @param p_objCommand what goes out, byte for byte.
    /// @param p_objReceiveBuffer takes the answer on USB, and has p_iReceiveLength bytes then. On
    ///        the others the answer comes later, as an event, and does not pass through it; the
    ///        LAN link gives it that size all the same.
    /// @param p_strError what went wrong, in words for a person; may stay empty.
    /// @param p_iReceivedCount the bytes received, on USB.
    /// @param p_iReceiveLength what MAnswer gives for the command: of settings ReceiveLength, which
    ///        counts each byte of the answer twice, else StatusLength.
    /// @return true when the bytes went out.
    virtual bool Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer,
                          std::string& p_strError, std::int16_t& p_iReceivedCount,
                          std::int16_t p_iReceiveLength) = 0;

    /// Another number each time that Open or Close has made another connection of it, or none: what
    /// belongs to one connection must not go over the next. Always the same for a link that holds
    /// no connection between two commands.
    [[nodiscard]] virtual std::int64_t Connection() const { return 0; }

    /// What Exchange says of a connection that is gone; may be empty.
    [[nodiscard]] virtual std::string WordsWithoutConnection() const { return {}; }
};
