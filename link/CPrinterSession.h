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

/// The link room put together: one printer, its links, and the exchange that uses them. What
/// happens in it is told to one ISessionEvents.
class CPrinterSession {
public:
    /// None of the references is owned; all outlive this.
    CPrinterSession(const CItemManager& p_objItemManager, CInterface& p_objInterface,
                    ISessionEvents& p_objEvents, const CPrinterPlatform& p_objPlatform,
                    const CExchangeManners& p_objManners = {});
    CPrinterSession(const CPrinterSession&) = delete;
    CPrinterSession& operator=(const CPrinterSession&) = delete;

    [[nodiscard]] ISessionEvents& Events() { return m_objEvents; }
    [[nodiscard]] CLinkState& State() { return m_objState; }
    [[nodiscard]] CBusy& Busy() { return m_objBusy; }
    [[nodiscard]] CWaiter& Waiter() { return m_objWaiter; }
    [[nodiscard]] CAnswerRouter& Router() { return m_objRouter; }
    [[nodiscard]] CPrinterLinks& Links() { return m_objLinks; }
    [[nodiscard]] CCommandExchange& Exchange() { return m_objExchange; }

private:
    ISessionEvents& m_objEvents;
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
