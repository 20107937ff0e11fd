#pragma once

#include "platform/ITcpClientEvents.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// One TCP client socket. No call blocks; what becomes of it is told by an event.
class ITcpClient {
public:
    virtual ~ITcpClient() = default;

    /// Who gets the events; null for nobody. Not owned, must outlive the socket or be withdrawn.
    virtual void SetEvents(ITcpClientEvents* p_objEvents) = 0;

    /// Where Connect goes. p_strHost is a dotted address, p_iPort 0 to 65535 (any other port
    /// makes Connect fail with the error event).
    virtual void SetRemote(const std::string& p_strHost, std::int32_t p_iPort) = 0;

    /// Begins to connect; a connection that stands or is being made is closed first. Ends in
    /// OnConnect or OnError.
    virtual void Connect() = 0;

    /// Closes at once, without an event; what was not read is lost. Harmless when not open.
    virtual void Close() = 0;

    /// Hands bytes over for sending. False, and nothing sent, when not connected.
    virtual bool SendData(std::span<const std::uint8_t> p_objBytes) = 0;

    /// Takes what has arrived, a bounded block at a time; empty when nothing is waiting.
    virtual std::vector<std::uint8_t> GetData() = 0;
};
