#include "link/CLptLink.h"

CLptLink::CLptLink(IParallelLibrary& p_objLibrary, ISessionEvents& p_objEvents)
    : m_objLibrary(p_objLibrary)
    , m_objEvents(p_objEvents) {}

bool CLptLink::ExchangeLpt(const Bytes& p_objCommand) {
    const std::int32_t iHandle = m_objLibrary.DeviceOpen("LPT1:");
    if (iHandle == IParallelLibrary::NoHandle) {
        m_objEvents.OnFailure({CFailure::Kind::ParallelNotOpened});
        return false;
    }
    m_objLibrary.DeviceTimeoutSet(iHandle, TimeoutMilliseconds);
    const std::int32_t iWritten = m_objLibrary.DeviceWrite(iHandle, p_objCommand);
    const bool bWhole = iWritten == static_cast<std::int32_t>(p_objCommand.size());
    if (!bWhole) {
        m_objEvents.OnFailure({CFailure::Kind::ParallelNotSent});
    }
    m_objLibrary.DeviceClose(iHandle);
    return bWhole;
}
