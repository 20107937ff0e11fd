#include "jobs/CDeadlineLoop.h"

#include <algorithm>

CDeadlineLoop::Limit::Limit(CDeadlineLoop& p_objLoop, double p_dSeconds)
    : m_objLoop(p_objLoop)
    , m_dOuter(p_objLoop.m_dEnd) {
    const double dEnd = p_objLoop.m_objClock.SecondsSinceMidnight() + p_dSeconds;
    p_objLoop.m_dEnd = std::min(dEnd, m_dOuter.value_or(dEnd));
}

CDeadlineLoop::Limit::~Limit() {
    m_objLoop.m_dEnd = m_dOuter;
}

CDeadlineLoop::CDeadlineLoop(IEventLoop& p_objEventLoop, const IClock& p_objClock)
    : m_objEventLoop(p_objEventLoop)
    , m_objClock(p_objClock) {}

void CDeadlineLoop::YieldFor(double p_dSeconds) {
    const double dNow = m_objClock.SecondsSinceMidnight();
    m_objEventLoop.YieldFor(std::min(p_dSeconds, m_dEnd.value_or(dNow + p_dSeconds) - dNow));
}

bool CDeadlineLoop::IsTimeUp() const {
    return m_dEnd && m_objClock.SecondsSinceMidnight() >= *m_dEnd;
}

bool CDeadlineLoop::IsClosing() const {
    return IsTimeUp() || m_objEventLoop.IsClosing();
}
