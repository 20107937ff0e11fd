#pragma once

#include "link/ILink.h"
#include "link/ISessionEvents.h"
#include "platform/IParallelLibrary.h"

/// The printer on the parallel port: sends and receives nothing. No interface of CInterface leads
/// here.
class CLptLink {
public:
    /// How long the printer has to take a command.
    static constexpr std::int32_t TimeoutMilliseconds = 5000;

    /// Neither is owned; both outlive this.
    CLptLink(IParallelLibrary& p_objLibrary, ISessionEvents& p_objEvents);

    /// Opens the port, sends one command and closes the port. False, and told, when the port
    /// cannot be had or does not take every byte.
    bool ExchangeLpt(const Bytes& p_objCommand);

private:
    IParallelLibrary& m_objLibrary;
    ISessionEvents& m_objEvents;
};
