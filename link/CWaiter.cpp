#include "link/CWaiter.h"

#include <utility>

CWaiter::Turn::Turn(CWaiter& p_objWaiter, Later p_iLater)
    : m_objWaiter(p_objWaiter)
    , m_objOuter(p_objWaiter.m_objRunning)
    , m_objOuterFault(std::exchange(p_objWaiter.m_objFault, nullptr))
    , m_iLater(p_iLater) {
    if (m_objOuter != nullptr && m_objOuter->m_iLater == Later::EndsIt) {
        m_objOuter->m_bOver = true;
    }
    m_objWaiter.m_objRunning = this;
    ++m_objWaiter.m_iInterruptions;
}

CWaiter::Turn::~Turn() {
    m_objWaiter.m_objRunning = m_objOuter;
    // What failed in the outer one's wait before this began is still the outer one's.
    m_objWaiter.m_objFault = m_objOuterFault;
}

CWaiter::Stopwatch::Stopwatch(const CWaiter& p_objWaiter)
    : m_objWaiter(p_objWaiter)
    , m_iInterruptions(p_objWaiter.m_iInterruptions)
    , m_dStart(p_objWaiter.Now()) {}

bool CWaiter::Stopwatch::IsInterrupted() const {
    return m_iInterruptions != m_objWaiter.m_iInterruptions;
}

double CWaiter::Stopwatch::Elapsed() {
    if (IsInterrupted()) {
        m_iInterruptions = m_objWaiter.m_iInterruptions;
        m_dStart = m_objWaiter.Now();
    }
    return m_objWaiter.Now() - m_dStart;
}

CWaiter::CWaiter(IEventLoop& p_objEventLoop, const IClock& p_objClock)
    : m_objEventLoop(p_objEventLoop)
    , m_objClock(p_objClock) {}

bool CWaiter::Yield() {
    m_objEventLoop.Yield();
    return GoesOn();
}

bool CWaiter::YieldFor(double p_dSeconds) {
    m_objEventLoop.YieldFor(p_dSeconds);
    return GoesOn();
}

bool CWaiter::GoesOn() {
    if (m_objFault) {
        std::rethrow_exception(std::exchange(m_objFault, nullptr));
    }
    return !MustStop();
}

bool CWaiter::MustStop() const {
    return IsClosing() || (m_objRunning != nullptr && m_objRunning->m_bOver);
}

void CWaiter::TakeOver() {
    if (m_objRunning == nullptr) {
        return;
    }
    for (Turn* objTurn = m_objRunning->m_objOuter; objTurn != nullptr;
         objTurn = objTurn->m_objOuter) {
        objTurn->m_bOver = true;
    }
}

void CWaiter::NoteAside() {
    if (m_objRunning != nullptr && m_objRunning->m_iLater == Turn::Later::DelaysIt) {
        ++m_iInterruptions;
    }
}

void CWaiter::StoreFault() {
    if (m_objRunning != nullptr) {
        m_objFault = std::current_exception();
    }
}
