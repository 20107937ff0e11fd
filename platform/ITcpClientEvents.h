#pragma once

#include <cstdint>
#include <string>

/// What a socket's error event tells. 0, an empty text or false stand for what the system does
/// not tell.
struct SocketError {
    // In place of the system's number, where a host is given by its name:
    static constexpr std::int32_t NoSuchHost = -2;   ///< nobody knows the name
    static constexpr std::int32_t NotResolved = -3;  ///< it could not be asked for

    std::int32_t m_iNumber = 0;       ///< the system's socket error number
    std::string m_strDescription;     ///< the toolkit's words for it
    std::int32_t m_iScode = 0;        ///< status code
    std::string m_strSource;          ///< who reports it
    std::string m_strHelpFile;        ///< help file
    std::int32_t m_iHelpContext = 0;  ///< help context
    bool m_bCancelDisplay = false;    ///< display cancelled
};

/// The events of an ITcpClient. They come from the event loop only, never from inside a call of
/// ITcpClient, and may call it.
class ITcpClientEvents {
public:
    virtual ~ITcpClientEvents() = default;

    /// The connection stands.
    virtual void OnConnect() = 0;
    /// The other side has closed the connection, in whatever way. Never an error event.
    virtual void OnClose() = 0;
    /// Everything given to SendData has left for the network.
    virtual void OnSendComplete() = 0;
    /// GetData has something to give.
    virtual void OnDataArrival() = 0;
    /// Connecting failed, or the connection broke on this side.
    virtual void OnError(const SocketError& p_objError) = 0;
};
