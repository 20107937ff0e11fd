#include "link/CLptLink.h"

CLptLink::CLptLink(IParallelLibrary& p_objLibrary, IMessageBox& p_objMessageBox)
    : m_objLibrary(p_objLibrary)
    , m_objMessageBox(p_objMessageBox) {}

bool CLptLink::ExchangeLpt(const Bytes& p_objCommand) {
    const std::int32_t iHandle = m_objLibrary.DeviceOpen("LPT1:");
    if (iHandle == IParallelLibrary::NoHandle) {
        m_objMessageBox.Beep();
        ShowFailure("'LPT1:' Open Error !!");
        return false;
    }
    m_objLibrary.DeviceTimeoutSet(iHandle, TimeoutMilliseconds);
    const std::int32_t iWritten = m_objLibrary.DeviceWrite(iHandle, p_objCommand);
    const bool bWhole = iWritten == static_cast<std::int32_t>(p_objCommand.size());
    if (!bWhole) {
        ShowFailure("Device Time Out !!");
    }
    m_objLibrary.DeviceClose(iHandle);
    return bWhole;
}

void CLptLink::ShowFailure(const char* p_strText) {
    m_objMessageBox.Show(p_strText, MessageIcon::Critical, "Failure");
}
