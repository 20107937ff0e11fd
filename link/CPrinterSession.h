#pragma once

#include "link/CAnswerRouter.h"
#include "link/CBusy.h"
#include "link/CComLink.h"
#include "link/CCommandExchange.h"
#include "link/CLanLink.h"
#include "link/CPrinterLinks.h"
#include "link/CUsbLink.h"
#include "link/CWaiter.h"
#include "platform/CPrinterPlatform.h"

/// The link room put together: one printer, its links, and the exchange that uses them.
class CPrinterSession {
public:
    /// None is owned; all outlive this.
    CPrinterSession(const CItemManager& p_objItemManager, CInterface& p_objInterface,
                    IExchangeView& p_objView, const CPrinterPlatform& p_objPlatform);

    [[nodiscard]] CBusy& Busy() { return m_objBusy; }
    [[nodiscard]] CWaiter& Waiter() { return m_objWaiter; }
    [[nodiscard]] CAnswerRouter& Router() { return m_objRouter; }
    [[nodiscard]] CPrinterLinks& Links() { return m_objLinks; }
    [[nodiscard]] CCommandExchange& Exchange() { return m_objExchange; }

private:
    CLinkState m_objState;
    CBusy m_objBusy;
    CWaiter m_objWaiter;
    CAnswerRouter m_objRouter;
    CComLink m_objComLink;
    CLanLink m_objLanLink;
    CUsbLink m_objUsbLink;
    CPrinterLinks m_objLinks;
    CCommandExchange m_objExchange;
};
