#include "link/CPrinterSession.h"

CPrinterSession::CPrinterSession(const CItemManager& p_objItemManager, CInterface& p_objInterface,
                                 ISessionEvents& p_objEvents, const CPrinterPlatform& p_objPlatform,
                                 const CExchangeManners& p_objManners)
    : m_objEvents(p_objEvents)
    , m_objBusy(p_objEvents)
    , m_objWaiter(p_objPlatform.m_objEventLoop, p_objPlatform.m_objClock)
    , m_objRouter(p_objItemManager, m_objState, p_objEvents)
    , m_objComLink(p_objPlatform.m_objSerialPort, p_objInterface, m_objRouter, m_objState,
                   p_objEvents, m_objWaiter)
    , m_objLanLink(p_objPlatform.m_objTcpClient, p_objInterface, m_objRouter, m_objState, m_objBusy,
                   m_objWaiter, p_objEvents, p_objManners)
    , m_objUsbLink(p_objPlatform.m_objUsbLibrary, m_objRouter, m_objState, m_objWaiter, p_objEvents,
                   p_objManners)
    , m_objExchange(p_objInterface, m_objLinks, m_objRouter, m_objState, m_objBusy, m_objWaiter,
                    p_objEvents, p_objManners) {
    m_objLinks.SetLink(CInterface::SerialInterface, m_objComLink);
    m_objLinks.SetLink(CInterface::LanInterface, m_objLanLink);
    m_objLinks.SetLink(CInterface::UsbInterface, m_objUsbLink);
}
