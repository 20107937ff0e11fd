#pragma once

#include "link/CFailure.h"

#include <cstdint>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// One way to the printer: serial port, TCP or USB.
///
/// What goes wrong is told to ISessionEvents at that moment; a failed exchange hands it back as
/// well. Nothing is retried. Every wait inside ends at once when the program closes.
class ILink {
public:
    /// How the answer to a command comes.
    enum class Answering : std::uint8_t {
        Later,    ///< as an event, for which nobody need wait
        Awaited,  ///< as an event, for which the exchange waits
        AtOnce,   ///< with the exchange
    };

    virtual ~ILink() = default;

    [[nodiscard]] virtual Answering HowItAnswers() const = 0;

    /// Opens the link with the settings of CInterface. False when it could not be opened, or when
    /// a later handler or the program's closing has ended the wait for it.
    virtual bool Open() = 0;

    /// Ends an Open that waits, at once: it returns false without a word, and the link is closed.
    /// Harmless when none does. Called from an event, while Open yields.
    virtual void StopOpening() {}

    /// Closes the link; harmless when it is not open. True, always.
    virtual bool Close() = 0;

    /// Sends one command.
    ///
    /// @param p_objCommand what goes out, byte for byte.
    /// @param p_objReceiveBuffer takes the answer on USB, and has p_iReceiveLength bytes then. On
    ///        the others the answer comes later, as an event, and does not pass through it; the
    ///        LAN link gives it that size all the same.
    /// @param p_objFailure what went wrong, if something did; may be set although true is returned,
    ///        when no answer came.
    /// @param p_iReceivedCount the bytes received, on USB.
    /// @param p_iReceiveLength what MAnswer gives for the command: of settings ReceiveLength, which
    ///        counts each byte of the answer twice, else StatusLength.
    /// @return true when the bytes went out.
    virtual bool Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer,
                          CFailure& p_objFailure, std::int16_t& p_iReceivedCount,
                          std::int16_t p_iReceiveLength) = 0;

    /// Another number each time that Open or Close has made another connection of it, or none: what
    /// belongs to one connection must not go over the next. Always the same for a link that holds
    /// no connection between two commands.
    [[nodiscard]] virtual std::int64_t Connection() const { return 0; }

    /// What Exchange says of a connection that is gone; may be of kind None.
    [[nodiscard]] virtual CFailure WithoutConnection() const { return {}; }

    /// Why no answer can come any more over what stood when the command went out: the printer has
    /// closed the connection, the port has gone. Of kind None while one can.
    [[nodiscard]] virtual CFailure Lost() const { return {}; }
};
