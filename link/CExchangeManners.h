#pragma once

#include <cstdint>

/// How an exchange deals with answers: a person at a window sees what happens and goes on, a
/// program has to know. As it is made, it is the window's.
struct CExchangeManners {
    /// How long a reply may take, in seconds.
    std::int16_t m_iReplySeconds = 5;

    /// Each command waits, on every link, until the very answer that it asks for has come: settings
    /// of the group that was asked for, a status where a status was. What else comes is let pass.
    /// Without it only the LAN link is waited for, on which any answer will do, and on USB
    /// receiving is left to the library.
    bool m_bAwaitsItsAnswer = false;

    /// How long the LAN link waits until the network has taken a command, in seconds.
    double m_dSendSeconds = 2;

    static CExchangeManners OfAProgram(std::int16_t p_iReplySeconds = 5,
                                       double p_dSendSeconds = 2) {
        return {p_iReplySeconds, true, p_dSendSeconds};
    }
};
