#pragma once

#include <cstdint>

/// What the links' events have told so far. Flags are 1 when set, but for the link error, which
/// is -1; 0 when not set.
///
/// The count of pending answers is kept on the serial link and on USB: 1 when a command goes out;
/// on the serial link raised by a complete settings frame, 0 after that frame has been handed on
/// and after a character that completes none.
struct CLinkState {
    std::int16_t m_iConnected = 0;       ///< the TCP connection stands
    std::int16_t m_iSendComplete = 0;    ///< the TCP socket has sent all it was given
    std::int16_t m_iLinkError = 0;       ///< the TCP socket has reported an error
    std::int16_t m_iReplyReceived = 0;   ///< the answer to the command in flight is in
    std::int16_t m_iStatusReceived = 0;  ///< a known status code came in
    std::int16_t m_iPendingAnswers = 0;  ///< answers that are outstanding, as told above
    std::int64_t m_iReplies = 0;         ///< how many answers have set the reply flag so far
    std::int64_t m_iAnswers = 0;         ///< how many of a stream's answers have come, of any kind
    std::int64_t m_iHandedOut = 0;       ///< how often bytes were handed to the system to send
};
