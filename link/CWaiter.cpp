#include "link/CWaiter.h"

#include <utility>

CWaiter::Turn::Turn(CWaiter& p_objWaiter)
    : m_objWaiter(p_objWaiter)
    , m_iOuter(p_objWaiter.m_iCurrent) {
    m_objWaiter.m_iCurrent = ++m_objWaiter.m_iLatest;
    m_objWaiter.m_objFault = nullptr;
}

CWaiter::Turn::~Turn() {
    m_objWaiter.m_iCurrent = m_iOuter;
    m_objWaiter.m_objFault = nullptr;
}

CWaiter::CWaiter(IEventLoop& p_objEventLoop, const IClock& p_objClock)
    : m_objEventLoop(p_objEventLoop)
    , m_objClock(p_objClock) {}

bool CWaiter::Yield() {
    m_objEventLoop.Yield();
    if (m_objFault) {
        std::rethrow_exception(std::exchange(m_objFault, nullptr));
    }
    return !MustStop();
}

bool CWaiter::MustStop() const {
    const bool bTakenOver = m_iCurrent != 0 && m_iCurrent != m_iLatest;
    return m_objEventLoop.IsClosing() || bTakenOver;
}

void CWaiter::StoreFault() {
    if (m_iCurrent != 0) {
        m_objFault = std::current_exception();
    }
}
